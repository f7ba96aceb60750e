#include "image/DifferingRanges.h"

#include <algorithm>
#include <functional>

namespace burnwick::modBinFileInfo {

namespace {

// How many pairs of bytes are what `alike` says, from the first on.
template <typename Alike>
std::size_t CountWhile(std::string_view bytes1, std::string_view bytes2, Alike alike) {
    const auto end = std::mismatch(bytes1.begin(), bytes1.end(), bytes2.begin(), bytes2.end(), alike);
    return static_cast<std::size_t>(end.first - bytes1.begin());
}

void AddBytes(std::string& first, std::string_view bytes) {
    first += bytes.substr(0, DifferingRange::MostBytes - first.size());
}

}  // namespace

void DifferingRanges::Take(std::uint64_t offset, std::string_view bytes1, std::string_view bytes2) {
    const auto skip = [&](std::size_t count) {
        offset += count;
        bytes1.remove_prefix(count);
        bytes2.remove_prefix(count);
    };
    while (!HasMore_) {
        skip(CountWhile(bytes1, bytes2, std::equal_to<>()));
        const std::size_t length = CountWhile(bytes1, bytes2, std::not_equal_to<>());
        if (length == 0) {
            return;
        }
        Add(offset, bytes1.substr(0, length), bytes2.substr(0, length));
        skip(length);
    }
}

void DifferingRanges::Add(std::uint64_t offset, std::string_view bytes1, std::string_view bytes2) {
    const bool goesOn = !Kept_.empty() && Kept_.back().Offset + Kept_.back().Length == offset;
    if (!goesOn && Kept_.size() == MostKept) {
        HasMore_ = true;
        return;
    }
    if (!goesOn) {
        Kept_.push_back({.Offset = offset});
    }
    DifferingRange& range = Kept_.back();
    range.Length += bytes1.size();
    AddBytes(range.Bytes1, bytes1);
    AddBytes(range.Bytes2, bytes2);
}

}  // namespace burnwick::modBinFileInfo
