#pragma once

#include <filesystem>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

// One of the folders that the system keeps for this user; empty when he has none.
std::filesystem::path KnownFolder(const GUID& folder);

// This program's own file; empty when the system does not tell.
std::filesystem::path ExecutablePath();

// The path in a variable of the environment; empty when it is not set.
std::filesystem::path PathFromEnvironment(const wchar_t* variable);

}  // namespace burnwick
