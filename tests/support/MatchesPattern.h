#pragma once

#include <gmock/gmock.h>

#include <string>

namespace burnwick::test {

// Regular expressions of the language's own library: the framework's know little on some systems.
bool IsOfPattern(const std::string& text, const std::string& pattern);

// The whole text matches.
MATCHER_P(MatchesPattern, pattern, std::string(negation ? "does not match " : "matches ") + pattern) {
    return IsOfPattern(std::string(arg), pattern);
}

}  // namespace burnwick::test
