#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace burnwick::test {

// The whole text matches, where the framework's own patterns know little on some systems.
MATCHER_P(MatchesPattern, pattern, std::string(negation ? "does not match " : "matches ") + pattern) {
    return std::regex_match(std::string(arg), std::regex(pattern));
}

}  // namespace burnwick::test
