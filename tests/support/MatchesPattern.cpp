#include "support/MatchesPattern.h"

#include <regex>

namespace burnwick::test {

bool IsOfPattern(const std::string& text, const std::string& pattern) {
    return std::regex_match(text, std::regex(pattern));
}

}  // namespace burnwick::test
