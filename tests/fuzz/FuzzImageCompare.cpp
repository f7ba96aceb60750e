#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>

#include "fuzz/Input.h"
#include "fuzz/SparseImage.h"
#include "image/ImageComparison.h"

// Two files of any length and content, compared.

namespace {

using burnwick::Bytes;
using burnwick::modBinFileInfo::ImageSource;
using burnwick::test::Input;
using burnwick::test::Require;

struct Outcome {
    std::string Error;
    std::int32_t Differences = -1;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome Compare(const Bytes& image1, const Bytes& image2) {
    std::istringstream stream1({reinterpret_cast<const char*>(image1.data()), image1.size()});
    std::istringstream stream2({reinterpret_cast<const char*>(image2.data()), image2.size()});
    ImageSource source1(stream1, image1.size());
    ImageSource source2(stream2, image2.size());
    Outcome outcome;
    outcome.Error = burnwick::modBinFileInfo::CompareSources(source1, source2, outcome.Differences);
    Require(!source1.HasFailed() && !source2.HasFailed(), "all was read");
    return outcome;
}

// Whether so many hexadecimal digits stand somewhere in a type code.
bool CodeHas(std::uint32_t code, std::uint32_t digits, unsigned count) {
    const std::uint32_t mask = count == 8 ? 0xFFFFFFFFU : (1U << (4 * count)) - 1;
    for (unsigned shift = 0; shift + 4 * count <= 32; shift += 4) {
        if ((code >> shift & mask) == digits) {
            return true;
        }
    }
    return false;
}

// The same, a byte at a time.
std::int32_t CountSlowly(const Bytes& image1, const Bytes& image2) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        code = code << 8 | (i < image1.size() ? std::to_integer<std::uint32_t>(image1[i]) : 0);
    }
    const bool hasBoot = image1.size() >= 4 && CodeHas(code, 0xBC0DE1, 6);
    std::int32_t differences = 0;
    for (std::size_t at = 0; at < image1.size(); ++at) {
        const bool isUnits = hasBoot && at >= 0xFF00 && at <= 0xFFFF;
        const bool isEnd = code == 0xBC0DE128 && at >= 0x10000 && at + 0x10000 >= image1.size();
        differences += !isUnits && !isEnd && image1[at] != image2[at] ? 1 : 0;
    }
    return differences;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const Bytes image1 = burnwick::test::TakeSparseImage(input);
    Bytes image2 = image1;
    if (input.TakeByte() == 1) {
        image2.resize(input.TakeNumber(3) % (burnwick::test::LongestSparseImage + 1));
    }
    burnwick::test::TakePieces(input, image2);

    Require(Compare(image1, image1) == Outcome{"", 0}, "an image is like itself");
    const Outcome outcome = Compare(image1, image2);
    Require(outcome == Compare(image2, image1), "the order does not matter");
    if (image1.size() != image2.size()) {
        Require(outcome == Outcome{"Error: File size mismatched", 0}, "lengths that differ are told");
    } else if (!std::equal(image1.begin(), image1.begin() + std::min<std::ptrdiff_t>(4, std::ssize(image1)),
                           image2.begin())) {
        Require(outcome == Outcome{"Error: File type mismatched", 0}, "types that differ are told");
    } else {
        Require(outcome == Outcome{"", CountSlowly(image1, image2)}, "every difference is counted once");
    }
    return 0;
}
