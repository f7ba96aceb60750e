#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace burnwick::modBinFileInfo {

// The stretch of an image that its texts are looked for in. Past its end there is nothing: a byte reads 0, a
// text stops.
class SearchBuffer {
public:
    // 32,767 bytes at most, so that every position fits 16 bits.
    static constexpr std::size_t MostBytes = 32'767;

    explicit SearchBuffer(std::string bytes);

    // Where a text stands first; 0 for nowhere, and so also for one at the very beginning.
    std::int16_t FindText(std::string_view text) const;

    std::uint8_t ByteAt(std::size_t at) const;

    // Up to so many characters.
    std::string_view TextAt(std::size_t at, std::size_t most) const;

    // Likewise, stopping before a character.
    std::string_view TextUntil(char end, std::size_t at, std::size_t most) const;

private:
    std::string Bytes_;
};

}  // namespace burnwick::modBinFileInfo
