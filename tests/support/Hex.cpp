#include "support/Hex.h"

#include <array>
#include <cstdio>
#include <sstream>

namespace burnwick::test {

Bytes FromHex(std::string_view text) {
    std::istringstream digits{std::string(text)};
    Bytes bytes;
    for (unsigned value = 0; digits >> std::hex >> value;) {
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

std::string ToHex(const Bytes& bytes) {
    std::string text;
    for (const std::byte value : bytes) {
        std::array<char, 4> digits{};
        std::snprintf(digits.data(), digits.size(), "%02X", std::to_integer<unsigned>(value));
        text += text.empty() ? "" : " ";
        text += digits.data();
    }
    return text;
}

}  // namespace burnwick::test
