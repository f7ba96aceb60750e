#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/process/Utf16.h"

namespace burnwick {

// Text is UTF-8 inside the program, whatever the system thinks of narrow characters. Any bytes make a path,
// and any path a text: a name that is no text must not stop the program.
inline std::filesystem::path Utf8Path(std::string_view utf8) {
    if constexpr (sizeof(std::filesystem::path::value_type) == 1) {
        return {std::u8string(utf8.begin(), utf8.end())};
    } else {
        return {Utf16Of(utf8)};
    }
}

inline std::string Utf8Text(const std::filesystem::path& path) {
    if constexpr (sizeof(std::filesystem::path::value_type) == 1) {
        const std::u8string utf8 = path.u8string();
        return {utf8.begin(), utf8.end()};
    } else {
        return Utf8Of(path.wstring());
    }
}

}  // namespace burnwick
