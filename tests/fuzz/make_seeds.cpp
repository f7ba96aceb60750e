#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/SparseImage.h"
#include "support/ImageBuilder.h"

// Writes the inputs that the targets for images begin with, in a folder for each target: they are made from
// images field by field.
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using burnwick::Bytes;
using burnwick::test::ImageBuilder;
using burnwick::test::KiB64;

using NamedImage = std::pair<std::string, ImageBuilder>;

constexpr std::size_t Long = 110'000;
constexpr int WrongUsage = 64;

const std::string Header = "Created:07/22/2004 15:05:09 Version:4.10 Model:VX-1600< Filename:VX16410F.BIN ";

ImageBuilder Zeros(std::size_t size, const char* code) {
    return ImageBuilder(size).Fill(0).TypeCode(code);
}

std::vector<NamedImage> HeaderTextImages() {
    return {
        {"empty", ImageBuilder(0)},
        {"header-text", Zeros(40'000, "C0DE0000").Signature(100).HeaderText(Header)},
        {"header-text-64k", Zeros(KiB64, "C0DE0000").Signature(100).HeaderText(Header)},
        {"header-text-cut", Zeros(150, "C0DE0000").Signature(100).HeaderText(Header)},
        {"header-text-parts",
         Zeros(Long, "C0DE0123").SecondTypeCode("C0DE0001").Signature(KiB64 + 9).HeaderText(Header)},
        {"header-text-kind7",
         Zeros(Long, "C0DE0137").Signature(100).HeaderText(Header).Text(8064, "\x04\x0A").Text(8071, "F")},
    };
}

std::vector<NamedImage> PlainImages() {
    return {
        {"plain", Zeros(9000, "02009E02").Text(500, "VER 4.10 ").Text(600, "English/French")},
        {"plain-signature",
         Zeros(9000, "C0DE0000").Signature(700).Text(719, "07/22/99 1234567890!").Text(748, "410!")},
        {"plain-64k-parts", Zeros(KiB64, "C0DE0123").SecondTypeCode("C0DE0123").Text(800, "Ver 4.10 ")},
        {"kind3",
         Zeros(Long, "BC0DE122").SecondTypeCode("00000000").Text(8064, "\x04\x05").Text(8073, "VX-122")},
        {"kind3-parts", Zeros(Long, "BC0DE128")
                            .SecondTypeCode("BC0D0000")
                            .Text(KiB64 + 8064, "\x04\x05")
                            .Text(KiB64 + 8073, "VX")},
        {"kind3-64k", Zeros(KiB64, "BC0DE122").Text(0x3000, "\xBC\x0D\xE1\x22*")},
        {"kind5-older", Zeros(Long, "C0DE0131").Text(8064, "\x04\x03").Text(8071, "F").Text(8073, "VX-131")},
        {"kind5-newer", Zeros(Long, "C0DE0131").Text(8064, "\x04\x04VX-131")},
        {"kind5-boot", Zeros(Long, "BC0DE131").Text(8073, "VX-131").Crc()},
    };
}

std::vector<NamedImage> BinaryHeaderImages() {
    return {
        {"kind8", Zeros(3000, "C0DE0149").BinaryHeader("VX-3200", "11/05/2009", 2, 7, 'G').OwnLength().Crc()},
        {"kind8-64k", Zeros(KiB64, "BC0DE149").BinaryHeader("VX-3200", "11/05/2009", 2, 7, 'G').Crc()},
        {"kind9", Zeros(Long, "C0DE0157").BinaryHeader("VX-5700", "03/14/2012", 1, 15, 'S').Crc()},
        {"kind9-cut", Zeros(40, "BC0DE157").BinaryHeader("VX-5700", "03/14/2012", 1, 15, 'S')},
        {"kind9-other-format", Zeros(300, "C0DE0157").Byte(14, 2)},
    };
}

void Write(const fs::path& folder, const std::string& name, const Bytes& content) {
    fs::create_directories(folder);
    std::ofstream file(folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + (folder / name).string());
    }
}

void WriteInfoSeeds(const fs::path& folder) {
    for (const auto& images : {HeaderTextImages(), PlainImages(), BinaryHeaderImages()}) {
        for (const auto& [name, image] : images) {
            Write(folder, name, burnwick::test::SparseFrom(image.Build()));
        }
    }
}

// An image, and the pieces that make another of it.
void WritePair(const fs::path& folder, const std::string& name, const Bytes& image, const Bytes& other) {
    Bytes input = burnwick::test::SparseFrom(image);
    input.push_back(std::byte{0});
    const Bytes pieces = burnwick::test::PiecesBetween(image, other);
    input.insert(input.end(), pieces.begin(), pieces.end());
    Write(folder, name, input);
}

void WriteCompareSeeds(const fs::path& folder) {
    for (const char* code : {"C0DE0149", "BC0DE122", "BC0DE128", "0BC0DE12"}) {
        const Bytes image = Zeros(0x28000, code).Build();
        ImageBuilder other = Zeros(0x28000, code);
        for (const std::size_t place :
             {0x20UL, 0xFEFFUL, 0xFF00UL, 0xFFFFUL, 0x10000UL, 0x17FFFUL, 0x18000UL}) {
            other.Byte(place, 1);
        }
        WritePair(folder, "differences-"s + code, image, other.Byte(0x27FFF, 1).Build());
        WritePair(folder, "equal-"s + code, image, image);
    }
    WritePair(folder, "types", Zeros(300, "C0DE0149").Build(), Zeros(300, "C0DE0157").Build());
    WritePair(folder, "short", Zeros(3, "C0DE01").Build(), Zeros(3, "C0DE01").Build());
    Bytes lengths = burnwick::test::SparseFrom(Zeros(300, "C0DE0149").Build());
    lengths.insert(lengths.end(), {std::byte{1}, std::byte{0}, std::byte{1}, std::byte{0}});
    Write(folder, "lengths", lengths);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "Usage: burnwick-seeds FOLDER\n";
        return WrongUsage;
    }
    try {
        WriteInfoSeeds(fs::path(argv[1]) / "fuzz_image_info");
        WriteCompareSeeds(fs::path(argv[1]) / "fuzz_image_compare");
    } catch (const std::exception& error) {
        std::cerr << "burnwick-seeds: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
