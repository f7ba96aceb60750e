#include <algorithm>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Measurements.h"
#include "bench/TestImage.h"
#include "image/modBinFileInfo.h"
#include "settings/IniText.h"

namespace bench {

namespace {

using burnwick::modBinFileInfo::DifferingRanges;

constexpr std::size_t Mebibyte = 1024UL * 1024;
constexpr int Runs = 200;
constexpr double LongestInformation = 10;  // milliseconds
constexpr double LongestComparison = 5;
constexpr double LongestRanges = 100;
constexpr double HighestGrowth = 60;  // 10 to 40 when each line is read once

// The median processor time of some work, in milliseconds.
template <typename Work>
double ProcessorTime(Work work) {
    work();  // brings the files into memory
    std::vector<double> times;
    for (int i = 0; i < Runs; ++i) {
        const std::clock_t begin = std::clock();
        work();
        times.push_back(1000 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return Median(times);
}

double TimeOfInformation(const std::filesystem::path& image, int kind) {
    return ProcessorTime([&image, kind] {
        if (burnwick::modBinFileInfo::GetBinFileInfo(image.string()).ImageKind != kind) {
            throw std::runtime_error("the information on an image is wrong");
        }
    });
}

// Of a comparison that tells where the images differ, as the window shows it.
double TimeOfRanges(const std::filesystem::path& image1, const std::filesystem::path& image2,
                    std::size_t ranges) {
    return ProcessorTime([&image1, &image2, ranges] {
        std::int32_t differences = 0;
        DifferingRanges found;
        const std::string error = burnwick::modBinFileInfo::CompareImages(image1.string(), image2.string(),
                                                                          differences, {}, &found);
        if (!error.empty() || differences == 0 || found.Kept().size() != ranges) {
            throw std::runtime_error("the places where two images differ are wrong");
        }
    });
}

// Another image of the same type: one byte of every so many differs.
void WriteOther(const std::filesystem::path& path, const std::filesystem::path& image, std::size_t step) {
    constexpr std::size_t typeCode = 4;
    std::ifstream in(image, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = typeCode; at < bytes.size(); at += step) {
        bytes[at] = static_cast<char>(~bytes[at]);
    }
    std::ofstream(path, std::ios::binary) << bytes;
}

double TimeOfComparison(const std::filesystem::path& image1, const std::filesystem::path& image2) {
    return ProcessorTime([&image1, &image2] {
        std::int32_t differences = -1;
        const std::string error =
            burnwick::modBinFileInfo::CompareImages(image1.string(), image2.string(), differences);
        if (!error.empty() || differences != 0) {
            throw std::runtime_error("the comparison of two images is wrong");
        }
    });
}

// Looking for a key in a settings file of this many bytes, all one line.
double TimeOfNoise(std::size_t size) {
    const burnwick::IniText noise(std::string(size, 'x'));
    return ProcessorTime([&noise] {
        if (noise.Value("A", "k")) {
            throw std::runtime_error("a key is found in noise");
        }
    });
}

}  // namespace

Figures MeasureImageCost(const std::filesystem::path& folder) {
    constexpr int kindWithCrc = 8;
    const auto summed = folder / "summed.bin";
    const auto copy = folder / "copy.bin";
    const auto sealed = folder / "sealed.bin";
    WriteUnmarkedImage(summed, Mebibyte);
    WriteUnmarkedImage(copy, Mebibyte);
    WriteMarkedImage(sealed, Mebibyte);
    const auto others = folder / "others.bin";
    const auto halves = folder / "halves.bin";
    WriteOther(others, summed, 1);
    WriteOther(halves, summed, 2);
    const double ranges =
        std::max(TimeOfRanges(summed, others, 1), TimeOfRanges(summed, halves, DifferingRanges::MostKept));
    const double information = std::max(TimeOfInformation(summed, 0), TimeOfInformation(sealed, kindWithCrc));
    return {
        AtMost("processor time of info on 1 MiB", information, LongestInformation, {2, " ms"}),
        AtMost("processor time of a comparison of 1 MiB", TimeOfComparison(summed, copy), LongestComparison,
               {2, " ms"}),
        AtMost("  that finds bytes and tells where", ranges, LongestRanges, {2, " ms"}),
        AtMost("a key in 10 MiB of noise, against 1 MiB", TimeOfNoise(10 * Mebibyte) / TimeOfNoise(Mebibyte),
               HighestGrowth, {1, " times"}),
    };
}

}  // namespace bench
