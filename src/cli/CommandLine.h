#pragma once

#include <string>
#include <vector>

#include "cli/Environment.h"

namespace burnwick::cli {

// Runs the program on its arguments, its own name left out, and gives the exit status.
int RunCommandLine(const std::vector<std::string>& words, Environment& environment);

}  // namespace burnwick::cli
