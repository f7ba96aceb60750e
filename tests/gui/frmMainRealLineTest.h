#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "gui/Await.h"
#include "gui/FakeDesktop.h"
#include "gui/GuiLoop.h"
#include "gui/WindowUser.h"
#include "job/JobThread.h"
#include "platform/loop/MessageLoop.h"
#include "platform/loop/WindowLoop.h"
#include "platform/serial/SerialDevice.h"
#include "settings/modUtility.h"
#include "support/UnitProgram.h"

namespace burnwick::test {

// The window as it is shipped: the event loop, the serial device, settings and log in files; at the other end
// of a line the simulated unit, a process of its own.
class frmMainRealLine : public WindowUser {
protected:
    frmMainRealLine() {
        modUtility::SetIniPath(Folder.Path() / "home" / "Burnwick.ini");
        modUtility::WriteIniValue("COMPort", "COM", "1");
        modUtility::WriteIniValue("COMPort", "BaudRate", "1");
        PortLoop_.Look = [this] { LookAtStatus(); };
    }
    ~frmMainRealLine() override { Window.reset(); }

    void AwaitEndOfRun() const override {
        EXPECT_TRUE(Await([this] { return !Window->IsRunning() && IsIdle(); }, std::chrono::minutes(2)));
    }

    // The program is started, its COM1 is this device.
    void StartAt(const std::string& device) {
        modUtility::WriteIniValue("Ports", "COM1", device);
        Window = std::make_unique<frmMain>(Services_);
        ASSERT_TRUE(Window->Form_Load());
    }
    void ExpectUsable(const UnitProgram& unit) {
        EXPECT_TRUE(IsIdle());
        modUtility::WriteIniValue("Ports", "COM1", unit.Line());
        Download(Image("next.bin"));
        EXPECT_EQ(Status(), Programmed) << Display();
    }

    // A job on the window's thread waits while a test does something in the middle of its run; one on its own
    // goes on.
    bool JobsHaveThreads = true;
    std::function<std::unique_ptr<SerialDevice>()> NewDevice = NewSerialDevice;  // of a job with a thread

private:
    std::unique_ptr<Job> JobFor(const FlashOrder& order, const JobEvents& take) {
        const auto watched = [this, take](const JobEvent& event) {
            take(event);
            LookAtStatus();
        };
        if (JobsHaveThreads) {
            const JobTools tools{NewSystemLoop, [this](MessageLoop&) { return NewDevice(); }};
            return std::make_unique<JobThread>(*Loop_, tools, order, watched);
        }
        return std::make_unique<InlineJob>(PortLoop_, NewSerialDevice(), order, watched);
    }

    const std::unique_ptr<EventLoop> Loop_ = NewWindowLoop();
    const std::unique_ptr<MessageLoop> SystemLoop_ = NewSystemLoop();
    GuiLoop PortLoop_{*SystemLoop_};
    FakeShell Shell_;
    WindowServices Services_{
        .Product = {.Title = "Burnwick", .Major = 2, .Minor = 8, .Revision = 1000},
        .Trace = [](const std::string&) {},
        .Loop = *Loop_,
        .PortLoop = PortLoop_,
        .Settings = IniSettings(),
        .ProgramFolder = Folder.Path() / "home",
        .Executable = "/opt/burnwick/Burnwick",
        .Shell = Shell_,
        .Copies =
            [](const std::string&) {
                return std::make_unique<FakeCopies>(false, false, [](const std::function<void()>&) {});
            },
        .NewDevice = NewSerialDevice,
        .NewJob = [this](const FlashOrder& order, const JobEvents& take) { return JobFor(order, take); },
        .InhibitSleep = [](const std::string&) { return nullptr; },
        .Beep = [] {},
        .Flash = [](QWidget*) {},
        .Notify = [](const std::string&, const std::string&) {},
    };
};

}  // namespace burnwick::test
