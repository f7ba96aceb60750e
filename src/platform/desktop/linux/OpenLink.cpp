#include "platform/desktop/OpenLink.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "platform/desktop/RunPrograms.h"

namespace burnwick {

namespace {

constexpr const char* Opener = "xdg-open";

bool IsInstalled(const std::string& program) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

// A browser may run for days, and is nobody's child.
bool OpenLink(const std::string& link) {
    constexpr auto longestStart = std::chrono::seconds(1);
    if (!IsInstalled(Opener)) {
        return false;
    }
    RunPrograms({{"setsid", "--fork", Opener, link}}, longestStart);
    return true;
}

}  // namespace burnwick
