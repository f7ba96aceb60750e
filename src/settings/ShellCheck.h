#pragma once

#include <filesystem>

#include "platform/desktop/ShellIntegration.h"
#include "settings/Settings.h"

namespace burnwick {

// At the start of a program: brings file association and desktop shortcut in line with this program's place,
// and the settings in line with them.
void CheckShellIntegration(ShellIntegration& shell, const std::filesystem::path& program,
                           SettingStore& settings);

}  // namespace burnwick
