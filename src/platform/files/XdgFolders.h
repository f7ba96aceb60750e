#pragma once

#include <filesystem>
#include <optional>

namespace burnwick {

// The user's folders that all desktops know. They need not be there.
struct UserFolders {
    std::filesystem::path Home;
    std::filesystem::path Data;    // what programs keep for him
    std::filesystem::path Config;  // what he has chosen
};

// Nothing for a user without a home, and on a system whose desktops read no files.
std::optional<UserFolders> FoldersOfUser();

// $XDG_DATA_HOME, or else its usual place in this home.
std::filesystem::path DataFolder(const std::filesystem::path& home);

// The folder whose files lie on the desktop; empty when the user has said that there is none.
std::filesystem::path DesktopFolder(const UserFolders& folders);

}  // namespace burnwick
