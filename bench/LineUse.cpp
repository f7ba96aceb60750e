#include <chrono>
#include <stdexcept>
#include <string>

#include "bench/AwakeCores.h"
#include "bench/ChildProcess.h"
#include "bench/LinkRun.h"
#include "bench/Measurements.h"
#include "bench/TestImage.h"

namespace bench {

namespace {

constexpr double LowestUse = 0.98;

// A block takes 262 bytes out and 4 in on a download, 6 out and 260 in on an upload.
constexpr int BytesPerBlock = 266;
constexpr int BitsPerByte = 10;

// The unit takes 20 ms to erase its flash before it answers a download's first block. That is not the link's
// doing, yet it is left in: in transfers of twelve seconds it weighs less than two thousandths.
constexpr std::size_t SmallImage = 256UL * 256;  // taken at 57600 only
constexpr std::size_t LargeImage = 512UL * 256;  // twice the blocks at twice the speed

double UseOf(const LinkTime& run, const std::string& baud) {
    const auto bits = static_cast<double>(run.Blocks) * BytesPerBlock * BitsPerByte;
    return bits / std::stod(baud) / run.Transfer.count();
}

Figures MeasureAt(const std::string& baud, const std::filesystem::path& image,
                  const std::filesystem::path& copy, const std::string& device) {
    const auto blocks = static_cast<int>(std::filesystem::file_size(image) / burnwick::BlockSize);
    const auto download = RunLink({burnwick::Method::Download, device, baud, image.string(), 0});
    const auto upload = RunLink({burnwick::Method::Upload, device, baud, copy.string(), blocks});
    if (!SameContents(image, copy)) {
        throw std::runtime_error("what was read back at " + baud + " is not what was sent");
    }
    return {
        AtLeast("share of the line's time, download at " + baud, UseOf(download, baud), LowestUse, {4, ""}),
        AtLeast("share of the line's time, upload at " + baud, UseOf(upload, baud), LowestUse, {4, ""})};
}

}  // namespace

Figures MeasureLineUse(const std::filesystem::path& folder) {
    const auto smallImage = folder / "small.bin";
    const auto largeImage = folder / "large.bin";
    WriteUnmarkedImage(smallImage, SmallImage);
    WriteMarkedImage(largeImage, LargeImage);
    const AwakeCores awake;
    const UnitProcess unit({"--pace", "--ident", "I"});
    auto figures = MeasureAt("57600", smallImage, folder / "small.copy", unit.Device());
    const auto faster = MeasureAt("115200", largeImage, folder / "large.copy", unit.Device());
    figures.insert(figures.end(), faster.begin(), faster.end());
    return figures;
}

}  // namespace bench
