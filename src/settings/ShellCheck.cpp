#include "settings/ShellCheck.h"

#include <string>
#include <system_error>

namespace burnwick {

namespace {

constexpr const char* OptionsSection = "Options";

// Writing costs locks and a look at the file: a start is to be quick.
void Store(const std::string& key, const std::string& value, const ReadSetting& read,
           const WriteSetting& write) {
    if (read(OptionsSection, key) != value) {
        write(OptionsSection, key, value);
    }
}

// A path may be written in several ways: in small letters or short names where a system takes these.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
    std::error_code error;
    return a == b || (std::filesystem::equivalent(a, b, error) && !error);
}

}  // namespace

void CheckShellIntegration(ShellIntegration& shell, const std::filesystem::path& program,
                           const ReadSetting& read, const WriteSetting& write) {
    const auto associated = shell.AssociatedProgram();
    if (associated.empty()) {
        Store("ContextMenu", "No", read, write);
    } else if (!IsSameFile(associated, program)) {
        shell.RegisterFileType(program);
        Store("ContextMenu", "Yes", read, write);
    }
    if (read(OptionsSection, "Desktop") == "Yes") {
        shell.CreateDesktopShortcut(program);
    } else {
        shell.DeleteDesktopShortcut();
        Store("Desktop", "No", read, write);
    }
}

}  // namespace burnwick
