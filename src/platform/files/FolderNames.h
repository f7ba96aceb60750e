#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace burnwick {

// The names of all that a folder lists, in any order and however long its path is. `error` tells why it
// cannot be listed.
std::vector<std::filesystem::path> FolderNames(const std::filesystem::path& folder, std::error_code& error);

}  // namespace burnwick
