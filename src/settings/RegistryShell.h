#pragma once

#include <filesystem>
#include <memory>

#include "platform/desktop/Registry.h"
#include "platform/desktop/ShellCalls.h"
#include "platform/desktop/ShellIntegration.h"

namespace burnwick {

// The desktop of a system that keeps file associations in a registry, and a launcher in a link on the
// desktop.
class RegistryShell final : public ShellIntegration {
public:
    RegistryShell(std::unique_ptr<Registry> registry, std::unique_ptr<ShellCalls> shell);

    std::filesystem::path AssociatedProgram() const override;
    void RegisterFileType(const std::filesystem::path& program) override;
    void UnregisterFileType() override;

    void CreateDesktopShortcut(const std::filesystem::path& program) override;
    // Of the desktop in the system's own folder: a link on the user's desktop is the user's to delete.
    void DeleteDesktopShortcut() override;

private:
    std::unique_ptr<Registry> Registry_;
    std::unique_ptr<ShellCalls> Shell_;
};

// The user's desktop, by the means that this system has for it. Never null.
std::unique_ptr<ShellIntegration> DesktopShell();

}  // namespace burnwick
