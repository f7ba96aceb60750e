#include "image/ImageComparison.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <string_view>

#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

// What lies here differs from unit to unit, and is never compared in images with boot code.
constexpr std::uint64_t UnitDataOffset = 0xFF00;
constexpr std::uint64_t UnitDataEnd = 0x10000;
// So much at the end of an image of type BC0DE128 is not compared either.
constexpr std::uint64_t UncomparedEnd = 0x10000;

std::int32_t DifferencesIn(std::string_view bytes1, std::string_view bytes2) {
    const auto both = std::min(bytes1.size(), bytes2.size());
    return std::transform_reduce(bytes1.begin(), bytes1.begin() + static_cast<std::ptrdiff_t>(both),
                                 bytes2.begin(), std::int32_t{0}, std::plus<>(),
                                 [](char one, char other) { return one != other ? 1 : 0; });
}

// Counts from one offset to before another; to the images' end when that comes first.
std::int32_t CountDifferences(ImageSource& source1, ImageSource& source2, std::uint64_t begin,
                              std::uint64_t end) {
    std::int32_t differences = 0;
    end = std::min(end, source1.Length());
    for (auto at = begin; at < end && !source1.HasFailed() && !source2.HasFailed();
         at += ImageSource::ChunkSize) {
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(ImageSource::ChunkSize, end - at));
        differences += DifferencesIn(source1.ReadAt(at, count), source2.ReadAt(at, count));
    }
    return differences;
}

}  // namespace

std::string CompareSources(ImageSource& source1, ImageSource& source2, std::int32_t& differences) {
    differences = 0;
    if (source1.Length() != source2.Length()) {
        return "Error: File size mismatched";
    }
    const std::string code = TypeCodeOf(source1);
    if (code != TypeCodeOf(source2)) {
        return "Error: File type mismatched";
    }
    const auto length = source1.Length();
    if (code.find("BC0DE1") == std::string::npos) {
        differences = CountDifferences(source1, source2, 0, length);
        return {};
    }
    const auto end = code != "BC0DE128" ? length : length - std::min(length, UncomparedEnd);
    differences = CountDifferences(source1, source2, 0, UnitDataOffset)
                  + CountDifferences(source1, source2, UnitDataEnd, end);
    return {};
}

}  // namespace burnwick::modBinFileInfo
