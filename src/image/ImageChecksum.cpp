#include "image/ImageChecksum.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>

#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

constexpr int FirstKindWithCrc = 5;
constexpr std::uint64_t CrcBytes = 4;
constexpr const char* NoChecksum = "00000000";

// Hands on the bytes before an offset, a chunk at a time. Ends early when a read fails.
template <typename Use>
void ForEachChunk(ImageSource& source, std::uint64_t end, Use use) {
    for (std::uint64_t offset = 0; offset < end && !source.HasFailed(); offset += ImageSource::ChunkSize) {
        const auto count = std::min<std::uint64_t>(ImageSource::ChunkSize, end - offset);
        use(source.ReadAt(offset, static_cast<std::size_t>(count)));
    }
}

std::string ByteSum(ImageSource& source) {
    std::uint32_t sum = 0;
    ForEachChunk(source, source.Length(), [&sum](const std::string& chunk) {
        sum = std::accumulate(chunk.begin(), chunk.end(), sum,
                              [](std::uint32_t part, char character) { return part + ToByte(character); });
    });
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%X", static_cast<unsigned>(sum));
    return digits.data();
}

std::string StoredCrc(ImageSource& source) {
    if (source.Length() < CrcBytes) {
        return NoChecksum;
    }
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08X", static_cast<unsigned>(CalculateCRC32(source)));
    const std::string stored = HexDigits(source.ReadAt(source.Length() - CrcBytes, CrcBytes));
    return stored == digits.data() ? stored : NoChecksum;
}

}  // namespace

std::string CalcImageChecksum(ImageSource& source, int kind) {
    return kind < FirstKindWithCrc ? ByteSum(source) : StoredCrc(source);
}

std::uint32_t CalculateCRC32(ImageSource& source) {
    uLong crc = crc32(0, nullptr, 0);
    const auto end = source.Length() - std::min(source.Length(), CrcBytes);
    ForEachChunk(source, end, [&crc](const std::string& chunk) {
        crc = crc32(crc, reinterpret_cast<const Bytef*>(chunk.data()), static_cast<uInt>(chunk.size()));
    });
    return static_cast<std::uint32_t>(crc);
}

}  // namespace burnwick::modBinFileInfo
