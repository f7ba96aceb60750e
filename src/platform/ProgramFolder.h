#pragma once

#include <filesystem>

namespace burnwick {

// The folder of settings, log and the verification file: $BURNWICK_HOME; else the executable's own folder;
// else, where that cannot be written, the user's own data folder. Made when it is missing, and never with a
// trailing separator.
std::filesystem::path ProgramFolder();

}  // namespace burnwick
