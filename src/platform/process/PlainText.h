#pragma once

#include <string>
#include <string_view>

namespace burnwick {

// The text (UTF-8) with another character in the place of each control character, the upper ones (U+0080 to
// U+009F) included: they would end a line, or command a terminal.
inline std::string PlainText(std::string_view utf8, char instead) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7F;
    std::string plain;
    plain.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const auto next = static_cast<unsigned char>(i + 1 < utf8.size() ? utf8[i + 1] : 0);
        const bool upper = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        plain += upper || byte < firstPrintable || byte == deleteCharacter ? instead : utf8[i];
        i += upper ? 1 : 0;
    }
    return plain;
}

}  // namespace burnwick
