#include "platform/process/ProcessText.h"

#include <cstdlib>

namespace burnwick {

std::vector<std::string> ProgramArguments(int argc, char* const* argv) {
    // A caller may have given not even the name.
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

int WordsForToolkit(int argc) {
    return argc;
}

std::string CommandText(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : " ") + words[i];
    }
    return text;
}

std::string EnvironmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

void PrintUnchanged() {}

}  // namespace burnwick
