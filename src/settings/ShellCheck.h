#pragma once

#include <filesystem>

#include "platform/Setting.h"
#include "platform/ShellIntegration.h"

namespace burnwick {

// At the start of a program: brings file association and desktop shortcut in line with this program's place,
// and the settings in line with them.
void CheckShellIntegration(ShellIntegration& shell, const std::filesystem::path& program,
                           const ReadSetting& read, const WriteSetting& write);

}  // namespace burnwick
