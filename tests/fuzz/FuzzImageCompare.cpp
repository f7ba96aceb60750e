#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>

#include "fuzz/Input.h"
#include "fuzz/SparseImage.h"
#include "image/ImageComparison.h"

// Two files of any length and content, compared: how many bytes differ, and where.

namespace {

using burnwick::Bytes;
using burnwick::modBinFileInfo::DifferingRange;
using burnwick::modBinFileInfo::DifferingRanges;
using burnwick::modBinFileInfo::ImageSource;
using burnwick::test::Input;
using burnwick::test::Require;

struct Outcome {
    std::string Error;
    std::int32_t Differences = -1;
    DifferingRanges Ranges{};

    // The ranges apart.
    friend bool operator==(const Outcome& one, const Outcome& other) {
        return one.Error == other.Error && one.Differences == other.Differences;
    }
};

Outcome Compare(const Bytes& image1, const Bytes& image2) {
    std::istringstream stream1({reinterpret_cast<const char*>(image1.data()), image1.size()});
    std::istringstream stream2({reinterpret_cast<const char*>(image2.data()), image2.size()});
    ImageSource source1(stream1, image1.size());
    ImageSource source2(stream2, image2.size());
    Outcome outcome;
    outcome.Error =
        burnwick::modBinFileInfo::CompareSources(source1, source2, outcome.Differences, &outcome.Ranges);
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
Outcome CompareSlowly(const Bytes& image1, const Bytes& image2) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        code = code << 8 | (i < image1.size() ? std::to_integer<std::uint32_t>(image1[i]) : 0);
    }
    const bool hasBoot = image1.size() >= 4 && CodeHas(code, 0xBC0DE1, 6);
    Outcome outcome{"", 0};
    for (std::size_t at = 0; at < image1.size(); ++at) {
        const bool isUnits = hasBoot && at >= 0xFF00 && at <= 0xFFFF;
        const bool isEnd = code == 0xBC0DE128 && at >= 0x10000 && at + 0x10000 >= image1.size();
        if (!isUnits && !isEnd && image1[at] != image2[at]) {
            ++outcome.Differences;
            const char byte1 = std::to_integer<char>(image1[at]);
            const char byte2 = std::to_integer<char>(image2[at]);
            outcome.Ranges.Take(at, {&byte1, 1}, {&byte2, 1});
        }
    }
    return outcome;
}

bool IsSame(const DifferingRanges& one, const DifferingRanges& other) {
    return one.HasMore() == other.HasMore()
           && std::equal(one.Kept().begin(), one.Kept().end(), other.Kept().begin(), other.Kept().end(),
                         [](const DifferingRange& a, const DifferingRange& b) {
                             return a.Offset == b.Offset && a.Length == b.Length && a.Bytes1 == b.Bytes1
                                    && a.Bytes2 == b.Bytes2;
                         });
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
        const Outcome slowly = CompareSlowly(image1, image2);
        Require(outcome == slowly, "every difference is counted once");
        Require(IsSame(outcome.Ranges, slowly.Ranges), "every range is told");
    }
    return 0;
}
