#include "platform/ProcessText.h"

#include <cstdlib>

#include "platform/JoinedWords.h"

namespace burnwick {

std::vector<std::string> ProgramArguments(int argc, char* const* argv) {
    // A caller may have given not even the name.
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string CommandText(const std::vector<std::string>& words) {
    return JoinedWords(words);
}

std::string EnvironmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

void PrintUnchanged() {}

}  // namespace burnwick
