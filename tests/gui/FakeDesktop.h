#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "platform/ShellIntegration.h"
#include "platform/SingleInstance.h"

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

class FakeCopies final : public SingleInstance {
public:
    FakeCopies(bool another, bool comes, std::function<void(std::function<void()>)> claim)
        : Another_(another), Comes_(comes), Claim_(std::move(claim)) {}

    bool AnotherRuns() override { return Another_; }
    bool BringForward() override { return Comes_; }
    void Claim(std::function<void()> comeForward) override { Claim_(std::move(comeForward)); }

private:
    bool Another_;
    bool Comes_;
    std::function<void(std::function<void()>)> Claim_;
};

}  // namespace burnwick::test
