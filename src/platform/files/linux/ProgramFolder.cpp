#include "platform/files/ProgramFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/files/XdgFolders.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// Empty when the variable is not set.
fs::path FromEnvironment(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

fs::path HomeFolder() {
    if (auto home = FromEnvironment("HOME"); !home.empty()) {
        return home;
    }
    const passwd* const user = getpwuid(getuid());
    return user != nullptr ? user->pw_dir : "/";
}

fs::path WithoutTrailingSeparator(const fs::path& folder) {
    auto text = folder.string();
    while (text.size() > 1 && text.back() == '/') {
        text.pop_back();
    }
    return text;
}

fs::path Made(const fs::path& folder) {
    std::error_code error;
    const auto absolute = fs::absolute(folder, error);
    auto plain = WithoutTrailingSeparator(error ? folder : absolute);
    // A folder that cannot be made shows when something is written to it, with a message that fits.
    fs::create_directories(plain, error);
    return plain;
}

// Empty when the system does not tell.
fs::path ExecutablesFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

// By `cmake --install`, which puts its papers there; programs that were only unpacked have none.
bool IsInstalled(const fs::path& executablesFolder) {
    std::error_code error;
    return fs::is_directory(executablesFolder.parent_path() / "share" / "doc" / "burnwick", error);
}

}  // namespace

fs::path ProgramFolder() {
    if (const auto chosen = FromEnvironment("BURNWICK_HOME"); !chosen.empty()) {
        return Made(chosen);
    }
    auto own = ExecutablesFolder();
    if (!own.empty() && !IsInstalled(own) && access(own.c_str(), W_OK) == 0) {
        return own;
    }
    return Made(DataFolder(HomeFolder()) / "burnwick");
}

std::vector<fs::path> ShippedFolders() {
    std::vector<fs::path> folders{ProgramFolder()};
    if (const auto own = ExecutablesFolder(); !own.empty()) {
        folders.push_back(own);
        folders.push_back(own.parent_path() / "share" / "burnwick");
    }
    return folders;
}

}  // namespace burnwick
