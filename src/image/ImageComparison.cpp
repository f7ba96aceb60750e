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

// One comparison of two images, part by part.
class Comparison {
public:
    Comparison(ImageSource& source1, ImageSource& source2, DifferingRanges* ranges,
               const std::function<bool()>& goesOn)
        : Source1_(source1), Source2_(source2), Ranges_(ranges), GoesOn_(goesOn) {}

    // Compares from one offset to before another; to the images' end when that comes first.
    void Compare(std::uint64_t begin, std::uint64_t end) {
        end = std::min(end, Source1_.Length());
        for (auto at = begin; at < end && !IsOver(); at += ImageSource::ChunkSize) {
            const auto count =
                static_cast<std::size_t>(std::min<std::uint64_t>(ImageSource::ChunkSize, end - at));
            CompareChunk(at, count);
            IsEnded_ = GoesOn_ && !GoesOn_();
        }
    }

    std::int32_t Differences() const { return Differences_; }
    // True when it was told not to go on.
    bool IsEnded() const { return IsEnded_; }

private:
    bool IsOver() const { return IsEnded_ || Source1_.HasFailed() || Source2_.HasFailed(); }

    void CompareChunk(std::uint64_t at, std::size_t count) {
        const std::string bytes1 = Source1_.ReadAt(at, count);
        const std::string bytes2 = Source2_.ReadAt(at, count);
        // Counting is many times faster than looking for places: most chunks of most images are alike.
        const std::int32_t found = DifferencesIn(bytes1, bytes2);
        if (found != 0 && Ranges_ != nullptr) {
            Ranges_->Take(at, bytes1, bytes2);
        }
        Differences_ += found;
    }

    ImageSource& Source1_;
    ImageSource& Source2_;
    DifferingRanges* Ranges_;
    const std::function<bool()>& GoesOn_;
    std::int32_t Differences_ = 0;
    bool IsEnded_ = false;
};

}  // namespace

std::string CompareSources(ImageSource& source1, ImageSource& source2, std::int32_t& differences,
                           DifferingRanges* ranges, const std::function<bool()>& goesOn) {
    differences = 0;
    if (source1.Length() != source2.Length()) {
        return "Error: File size mismatched";
    }
    const std::string code = TypeCodeOf(source1);
    if (code != TypeCodeOf(source2)) {
        return "Error: File type mismatched";
    }
    const auto length = source1.Length();
    Comparison comparison(source1, source2, ranges, goesOn);
    if (code.find("BC0DE1") == std::string::npos) {
        comparison.Compare(0, length);
    } else {
        comparison.Compare(0, UnitDataOffset);
        comparison.Compare(UnitDataEnd,
                           code != "BC0DE128" ? length : length - std::min(length, UncomparedEnd));
    }
    if (comparison.IsEnded()) {
        return "Error: The comparison was ended";
    }
    differences = comparison.Differences();
    return {};
}

}  // namespace burnwick::modBinFileInfo
