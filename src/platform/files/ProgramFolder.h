#pragma once

#include <filesystem>
#include <vector>

namespace burnwick {

// The folder of settings, log and the verification file: $BURNWICK_HOME; else the executable's own folder;
// else, where that cannot be written, the user's own data folder. Made when it is missing, and never with a
// trailing separator.
std::filesystem::path ProgramFolder();

// Where what ships with the program may be, the likeliest first: the program folder, the executable's own,
// and where an install for everybody puts it.
std::vector<std::filesystem::path> ShippedFolders();

}  // namespace burnwick
