#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace burnwick {

// Text is UTF-8 inside the program, whatever the system thinks of narrow characters.
inline std::filesystem::path Utf8Path(std::string_view utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

inline std::string Utf8Text(const std::filesystem::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

}  // namespace burnwick
