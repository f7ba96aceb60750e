#pragma once

#include <map>
#include <optional>
#include <string>

#include "Child.h"

namespace burnwick::test {

// A text and its bytes in the 8-bit characters of this computer's language.
struct ForeignText {
    std::wstring Wide;
    std::string Utf8;
    std::string Bytes;
};

// Nothing for a language that is not known here.
inline std::optional<ForeignText> TextOfThisLanguage() {
    static const std::map<std::string, ForeignText> texts{
        {"932", {L"\u65E5\u672C\u8868", "\u65E5\u672C\u8868", "\x93\xFA\x96\x7B\x95\x5C"}},
        {"1250", {L"\u017Elu\u0165", "\u017Elu\u0165", "\x9Elu\x9D"}},
        {"1251", {L"\u041F\u0440\u043E", "\u041F\u0440\u043E", "\xCF\xF0\xEE"}},
        {"1252", {L"Ger\u00E4t \u20AC", "Ger\u00E4t \u20AC", "Ger\xE4t \x80"}},
    };
    const auto found = texts.find(Child(Child::Doing(L"code-page")).Line());
    return found != texts.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace burnwick::test
