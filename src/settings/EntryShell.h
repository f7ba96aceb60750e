#pragma once

#include "platform/desktop/ShellIntegration.h"

namespace burnwick {

// The desktop of a system that keeps file associations and launchers in the user's files (freedesktop.org).
class EntryShell final : public ShellIntegration {
public:
    std::filesystem::path AssociatedProgram() const override;
    void RegisterFileType(const std::filesystem::path& program) override;
    void UnregisterFileType() override;
    void CreateDesktopShortcut(const std::filesystem::path& program) override;
    void DeleteDesktopShortcut() override;
};

}  // namespace burnwick
