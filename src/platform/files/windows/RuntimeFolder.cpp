#include "platform/files/RuntimeFolder.h"

#include "platform/process/windows/SystemHeaders.h"

#include <knownfolders.h>

#include "platform/files/windows/UserFolders.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// A link could lead to where others may write.
bool IsFolder(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0
           && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

}  // namespace

// In the user's profile, which no other user may enter; the environment could name any folder. It is not
// emptied: what is kept there ends with its process all the same.
fs::path RuntimeFolder() {
    const auto data = KnownFolder(FOLDERID_LocalAppData);
    if (data.empty()) {
        return {};
    }
    const auto own = data / L"Burnwick" / L"Run";
    std::error_code error;
    fs::create_directories(own, error);
    return IsFolder(own.parent_path()) && IsFolder(own) ? own : fs::path();
}

}  // namespace burnwick
