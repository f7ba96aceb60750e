#include "support/Hex.h"

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
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X", std::to_integer<unsigned>(value));
        text += (text.empty() ? "" : " ") + std::string(digits);
    }
    return text;
}

}  // namespace burnwick::test
