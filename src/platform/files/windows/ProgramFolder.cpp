#include "platform/files/ProgramFolder.h"

#include "platform/process/windows/SystemHeaders.h"

#include <knownfolders.h>

#include <string>

#include "platform/files/windows/UserFolders.h"
#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// A drive's root keeps its separator: without it, it would be another folder.
fs::path WithoutTrailingSeparator(const fs::path& folder) {
    auto plain = folder;
    plain.make_preferred();
    while (!plain.has_filename() && plain.has_relative_path()) {
        plain = plain.parent_path();
    }
    return plain;
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
    return ExecutablePath().parent_path();
}

// Permissions alone do not tell: a disk may be write-protected, a network's folder has a say of its own.
bool CanBeWritten(const fs::path& folder) {
    const auto probe = folder / (L"Burnwick-" + std::to_wstring(GetCurrentProcessId()) + L".tmp");
    const UniqueHandle file(CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return file || GetLastError() == ERROR_FILE_EXISTS;
}

fs::path DataFolder() {
    const auto named = PathFromEnvironment(L"LOCALAPPDATA");
    return named.is_absolute() ? named : KnownFolder(FOLDERID_LocalAppData);
}

}  // namespace

fs::path ProgramFolder() {
    if (const auto chosen = PathFromEnvironment(L"BURNWICK_HOME"); !chosen.empty()) {
        return Made(chosen);
    }
    auto own = ExecutablesFolder();
    if (!own.empty() && CanBeWritten(own)) {
        return own;
    }
    return Made(DataFolder() / L"Burnwick");
}

std::vector<fs::path> ShippedFolders() {
    std::vector<fs::path> folders{ProgramFolder()};
    if (const auto own = ExecutablesFolder(); !own.empty()) {
        folders.push_back(own);
    }
    return folders;
}

}  // namespace burnwick
