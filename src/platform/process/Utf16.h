#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace burnwick {

// UTF-16 in wide characters, as systems have it whose paths are wide. Nothing here fails: what is no text
// becomes U+FFFD. Half a surrogate pair, which such a system allows in a name, survives both ways.
namespace utf16 {

constexpr std::uint32_t NoText = 0xFFFD;

// Takes one character off the front.
inline std::uint32_t TakeUtf8(std::string_view& text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < more) {
        return NoText;
    }
    std::uint32_t character = lead & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        if ((byte & 0xC0U) != 0x80) {
            return NoText;
        }
        character = character << 6U | (byte & 0x3FU);
    }
    const bool tooLong = (more == 2 && character < 0x800) || (more == 3 && character < 0x1'0000);
    if (tooLong || character > 0x10'FFFF) {
        return NoText;
    }
    text.remove_prefix(more);
    return character;
}

inline void PutUtf8(std::string& text, std::uint32_t character) {
    const auto put = [&text](std::uint32_t byte) {
        text += static_cast<char>(static_cast<std::uint8_t>(byte));
    };
    if (character < 0x80) {
        put(character);
        return;
    }
    if (character < 0x800) {
        put(0xC0U | character >> 6U);
    } else if (character < 0x1'0000) {
        put(0xE0U | character >> 12U);
        put(0x80U | (character >> 6U & 0x3FU));
    } else {
        put(0xF0U | character >> 18U);
        put(0x80U | (character >> 12U & 0x3FU));
        put(0x80U | (character >> 6U & 0x3FU));
    }
    put(0x80U | (character & 0x3FU));
}

}  // namespace utf16

inline std::wstring Utf16Of(std::string_view utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::uint32_t character = utf16::TakeUtf8(utf8);
        if (character < 0x1'0000) {
            wide += static_cast<wchar_t>(character);
        } else {
            wide += static_cast<wchar_t>(0xD800U + ((character - 0x1'0000U) >> 10U));
            wide += static_cast<wchar_t>(0xDC00U + (character & 0x3FFU));
        }
    }
    return wide;
}

inline std::string Utf8Of(std::wstring_view utf16) {
    std::string utf8;
    utf8.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const std::uint32_t unit = static_cast<std::uint16_t>(utf16[i]);
        const std::uint32_t next = i + 1 < utf16.size() ? static_cast<std::uint16_t>(utf16[i + 1]) : 0;
        const bool isPair = (unit & 0xFC00U) == 0xD800 && (next & 0xFC00U) == 0xDC00;
        utf16::PutUtf8(utf8, isPair ? 0x1'0000U + ((unit & 0x3FFU) << 10U | (next & 0x3FFU)) : unit);
        i += isPair ? 1 : 0;
    }
    return utf8;
}

}  // namespace burnwick
