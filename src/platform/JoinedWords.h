#pragma once

#include <string>
#include <vector>

namespace burnwick {

// With one blank between any two of them.
inline std::string JoinedWords(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : " ") + words[i];
    }
    return text;
}

}  // namespace burnwick
