#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/desktop/ShellIntegration.h"

namespace burnwick::test {

// A desktop that keeps what it was asked for.
class FakeShell final : public ShellIntegration {
public:
    std::filesystem::path AssociatedProgram() const override { return Associated; }
    void RegisterFileType(const std::filesystem::path& program) override {
        Note("register " + program.string());
    }
    void UnregisterFileType() override { Note("unregister"); }
    void CreateDesktopShortcut(const std::filesystem::path& program) override {
        Note("shortcut " + program.string());
    }
    void DeleteDesktopShortcut() override { Note("no shortcut"); }

    std::filesystem::path Associated;
    std::function<void(const std::string& call)> Note = [](const std::string&) {};
};

}  // namespace burnwick::test
