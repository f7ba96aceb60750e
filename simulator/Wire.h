#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace simulator {

// Bytes of a message without data: FF AA, its kind, its check.
inline constexpr std::size_t CommandLength = 4;

// The length in time of so many bytes at `baud` bit/s: start bit, eight data bits, stop bit. A line without a
// speed takes no time.
constexpr std::chrono::nanoseconds AirTime(std::size_t bytes, unsigned baud) {
    constexpr std::chrono::nanoseconds::rep bitsPerByte = 10;
    constexpr std::chrono::nanoseconds second = std::chrono::seconds(1);
    return baud == 0 ? std::chrono::nanoseconds(0)
                     : static_cast<std::chrono::nanoseconds::rep>(bytes) * bitsPerByte * second / baud;
}

// What a byte turns into when the two ends of the line disagree about the speed: always the same wrong byte,
// and one that occurs in no header, neither the unit's nor the host's (0x80 to 0xBF).
constexpr std::byte Garbled(std::byte value) {
    return std::byte{0x80} | (~value & std::byte{0x3F});
}

template <typename... Numbers>
std::vector<std::byte> BytesOf(Numbers... numbers) {
    return {static_cast<std::byte>(numbers)...};
}

}  // namespace simulator
