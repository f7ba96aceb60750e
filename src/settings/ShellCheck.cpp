#include "settings/ShellCheck.h"

#include <string>
#include <system_error>

namespace burnwick {

namespace {

// A path may be written in several ways: in small letters or short names where a system takes these.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
    std::error_code error;
    return a == b || (std::filesystem::equivalent(a, b, error) && !error);
}

}  // namespace

void CheckShellIntegration(ShellIntegration& shell, const std::filesystem::path& program,
                           SettingStore& settings) {
    const auto associated = shell.AssociatedProgram();
    const bool isAnothers = !associated.empty() && !IsSameFile(associated, program);
    if (isAnothers) {
        shell.RegisterFileType(program);
    }
    const bool hasShortcut = settings.Value(Setting::Desktop) == "Yes";
    if (hasShortcut) {
        shell.CreateDesktopShortcut(program);
    } else {
        shell.DeleteDesktopShortcut();
    }
    settings.Change([&](SettingValues& values) {
        if (associated.empty()) {
            values.Store(Setting::ContextMenu, "No");
        } else if (isAnothers) {
            values.Store(Setting::ContextMenu, "Yes");
        }
        if (!hasShortcut) {
            values.Store(Setting::Desktop, "No");
        }
    });
}

}  // namespace burnwick
