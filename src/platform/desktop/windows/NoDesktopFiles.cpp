#include "platform/desktop/RunPrograms.h"
#include "platform/files/XdgFolders.h"

namespace burnwick {

// The desktop of Windows reads the registry instead of files.
std::optional<UserFolders> FoldersOfUser() {
    return std::nullopt;
}

std::filesystem::path DesktopFolder(const UserFolders& /*folders*/) {
    return {};
}

void RunPrograms(const std::vector<std::vector<std::string>>& /*commands*/,
                 std::chrono::milliseconds /*atMost*/) {}

}  // namespace burnwick
