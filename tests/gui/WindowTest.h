#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gui/FakeDesktop.h"
#include "gui/GuiLoop.h"
#include "gui/WindowUser.h"
#include "simulator/Line.h"
#include "simulator/Unit.h"
#include "support/FakeSettings.h"
#include "support/SampleImages.h"
#include "support/SimulatedDevice.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

// The main window in-process, with a simulated unit at its ports, in virtual time.
class WindowTest : public WindowUser {
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
    // A unit whose read-back differs. Each fault is spent twice: on the answer of the download, where it
    // spoils nothing, and on that of the read-back.
    static std::vector<simulator::FaultOrder> ThreeWrongBytes();
    // Does something in the middle of a run, at this moment of virtual time.
    void At(Microseconds moment, std::function<void()> action) { Loop.At(moment, std::move(action)); }
    // Lets so much virtual time pass.
    void Pass(Microseconds time);

    // Programs the usual image, and answers the question for a verification after it.
    void DownloadAndAnswer(QMessageBox::StandardButton answer);
    bool CloseIsGreyed() const;
    bool IsIdle() const { return WindowUser::IsIdle() && AwakeNow == 0; }

    VirtualLoop Loop;
    FakeSettings Settings{{"COMPort/COM", "1"}, {"COMPort/BaudRate", "1"}, {"Options/LogOption", "&All"}};
    std::vector<std::string> Calls;  // what the window asked of the world, in order
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
    std::filesystem::path HelpFile;
    std::string Title = "Burnwick";
    std::string ProgramFolder = "home";  // its name in Folder
    std::filesystem::path Executable = "/opt/burnwick/Burnwick";

private:
    std::unique_ptr<SerialDevice> NewDevice();
    void Note(const std::string& call) { Calls.push_back(call); }

    GuiLoop GuiLoop_{Loop};
    WindowServices Services_;
    int Devices_ = 0;
    FakeDevice* Cable_ = nullptr;
    std::unique_ptr<simulator::Line> Line_;
};

}  // namespace burnwick::test
