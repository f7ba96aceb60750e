#include "platform/desktop/RunPrograms.h"
#include "platform/files/XdgFolders.h"

namespace burnwick {

// Desktops look into the registry here, and not into files.
std::optional<UserFolders> FoldersOfUser() {
    return std::nullopt;
}

std::filesystem::path DesktopFolder(const UserFolders& /*folders*/) {
    return {};
}

void RunPrograms(const std::vector<std::vector<std::string>>& /*commands*/,
                 std::chrono::milliseconds /*atMost*/) {}

}  // namespace burnwick
