#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace burnwick {

// The lines of a text, each without its line feed; views of the text itself.
inline std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(lines.back().size() + 1, text.size()));
    }
    return lines;
}

// Without the blanks around it, of which a carriage return is one.
inline std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

}  // namespace burnwick
