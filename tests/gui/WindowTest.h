#pragma once

#include <gmock/gmock.h>

#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "gui/Answers.h"
#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/SampleImages.h"
#include "support/SimulatedDevice.h"
#include "support/TempFolder.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

// A virtual loop that lets the window's own events happen in each Yield.
class GuiLoop final : public MessageLoop {
public:
    explicit GuiLoop(VirtualLoop& loop) : Loop_(loop) {}

    void Yield(Microseconds atMost) override;
    std::chrono::milliseconds MillisecondClock() const override { return Loop_.MillisecondClock(); }
    std::tm Now() const override { return Loop_.Now(); }
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        return Loop_.NewTimer(interval, std::move(tick));
    }
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override {
        return Loop_.WatchInput(handle, std::move(ready));
    }

    // Called after each Yield.
    std::function<void()> Look = [] {};

private:
    VirtualLoop& Loop_;
};

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

// The main window in-process, with a simulated unit at its ports, in virtual time.
class WindowTest : public ::testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    // Starts the program. False when it ended at once.
    bool Start(const std::string& commandLine = {});
    // Puts a unit at the other end of the line; without one, nobody answers.
    void Connect(simulator::UnitOptions options, bool paced = false);
    // The cable is pulled out of the computer.
    void PullOut() const { Cable_->PullOut(); }
    void ConnectUnitOfSize(std::size_t size, std::vector<simulator::FaultOrder> faults = {});
    // An image of 262,144 bytes, with a name of its own.
    std::string Image(const std::string& name = "unit.bin") const;

    // The user chooses this file behind Download, or this size and file behind Upload.
    void Download(const std::string& path);
    void Upload(int chip, const std::string& path);
    void Click(const char* button) const;
    void Trigger(const char* command) const;
    // Does something in the middle of a run, at this moment of virtual time.
    void At(Microseconds moment, std::function<void()> action) { Loop.At(moment, std::move(action)); }
    // Does something when the status first begins so.
    void WhenStatus(const std::string& begins, std::function<void()> action);
    // Lets so much virtual time pass.
    void Pass(Microseconds time);

    template <typename Control = QWidget>
    Control* Find(const char* name) const {
        auto* const found = Window->findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    std::string TextOf(const char* label) const;
    std::string Status() const { return TextOf("lblStatus"); }
    std::string Display() const;
    std::string Caption() const { return Window->windowTitle().toStdString(); }
    std::string BarText() const;
    bool IsIdle() const;
    std::string LogText() const;
    // Saves a picture of the window.
    void Picture(const std::string& name) const;

    TempFolder Folder;
    VirtualLoop Loop;
    std::map<std::string, std::string> Settings;  // "COMPort/COM" and so on
    std::vector<std::string> Calls;               // what the window asked of the world, in order
    std::optional<CommError> PortTrouble;
    std::string TroubledDevice;  // its path; every one when empty
    std::unique_ptr<simulator::Unit> Unit;
    FakeShell Shell;
    bool AnotherRuns = false;
    bool AnotherComes = true;
    std::function<void()> ComeForward;
    std::vector<std::string> Stored;  // "Section/Key=Value", in order
    std::function<void(const std::string& key)> OnStore = [](const std::string&) {};  // "Path/LastPath" …
    int Beeps = 0;
    int Flashes = 0;
    int AwakeNow = 0;
    bool Debug = false;
    std::string Title = "Burnwick";
    Answers User;
    std::unique_ptr<frmMain> Window;

private:
    std::unique_ptr<SerialDevice> NewDevice();
    void LookAtStatus();
    void Note(const std::string& call) { Calls.push_back(call); }

    std::vector<std::pair<std::string, std::function<void()>>> Waiting_;
    GuiLoop GuiLoop_{Loop};
    WindowServices Services_;
    int Devices_ = 0;
    FakeDevice* Cable_ = nullptr;
    std::unique_ptr<simulator::Line> Line_;
};

}  // namespace burnwick::test
