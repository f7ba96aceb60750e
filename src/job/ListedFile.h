#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace burnwick {

// The file of this name in the first folder that has it, whatever the case of its letters; of several in one
// folder the one that is written as `name` comes first. Empty when there is none. A folder of that name is no
// file, and a folder that cannot be listed has none.
std::filesystem::path ListedFile(const std::vector<std::filesystem::path>& folders, const std::string& name);

}  // namespace burnwick
