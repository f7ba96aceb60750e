#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick::modBinFileInfo {

// Bytes one behind the other, all of which differ.
struct DifferingRange {
    // So many bytes of it are kept, at most.
    static constexpr std::size_t MostBytes = 16;

    std::uint64_t Offset = 0;  // the same in both images
    std::uint64_t Length = 0;  // bytes
    std::string Bytes1{};      // its first bytes in the one image
    std::string Bytes2{};      // and in the other
};

// Where two images differ: the first ranges, by their offset.
class DifferingRanges {
public:
    static constexpr std::size_t MostKept = 1'000;

    const std::vector<DifferingRange>& Kept() const { return Kept_; }
    // True when there are ranges behind those that are kept.
    bool HasMore() const { return HasMore_; }

    // Takes the bytes of both images behind an offset, as many of the one as of the other. A range goes on
    // where these follow those that were taken before.
    void Take(std::uint64_t offset, std::string_view bytes1, std::string_view bytes2);

private:
    void Add(std::uint64_t offset, std::string_view bytes1, std::string_view bytes2);

    std::vector<DifferingRange> Kept_;
    bool HasMore_ = false;
};

}  // namespace burnwick::modBinFileInfo
