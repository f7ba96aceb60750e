#include "settings/RegistryShell.h"

#include <utility>

#include "platform/files/Utf8Path.h"
#include "settings/EntryShell.h"
#include "settings/FileType.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr const char* LinkName = "Burnwick.lnk";

// What the desktop shows beside the link.
constexpr const char* LinkDescription = "Burnwick writes images into units over a serial line";

// Empty when there is no such folder: a relative path would lead anywhere.
fs::path LinkIn(const fs::path& folder) {
    return folder.is_absolute() ? folder / LinkName : fs::path();
}

}  // namespace

RegistryShell::RegistryShell(std::unique_ptr<Registry> registry, std::unique_ptr<ShellCalls> shell)
    : Registry_(std::move(registry)), Shell_(std::move(shell)) {}

fs::path RegistryShell::AssociatedProgram() const {
    return Utf8Path(modUtility::AssociatedProgram(*Registry_));
}

void RegistryShell::RegisterFileType(const fs::path& program) {
    modUtility::RegisterFileType(*Registry_, Utf8Text(fs::path(program).make_preferred()));
    Shell_->FileTypesChanged();
}

void RegistryShell::UnregisterFileType() {
    modUtility::UnregisterFileType(*Registry_);
    Shell_->FileTypesChanged();
}

void RegistryShell::CreateDesktopShortcut(const fs::path& program) {
    const auto path = LinkIn(Shell_->DesktopFolder());
    const LinkContent wanted{fs::path(program).make_preferred(), LinkDescription};
    if (!path.empty() && Shell_->Link(path) != wanted) {
        Shell_->StoreLink(path, wanted);
    }
}

void RegistryShell::DeleteDesktopShortcut() {
    // One that is not there, or that the system keeps, is no error.
    std::error_code ignored;
    fs::remove(LinkIn(Shell_->WindowsFolder() / "Desktop"), ignored);
}

std::unique_ptr<ShellIntegration> DesktopShell() {
    auto registry = SystemRegistry();
    auto shell = SystemShellCalls();
    if (registry && shell) {
        return std::make_unique<RegistryShell>(std::move(registry), std::move(shell));
    }
    return std::make_unique<EntryShell>();
}

}  // namespace burnwick
