#include "gui/RunningCopy.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "platform/EnvironmentVariable.h"
#include "support/Program.h"

namespace burnwick::test {

struct MeetingPlace::Place {
    Place() { std::filesystem::permissions(Folder.Path(), std::filesystem::perms::owner_all); }

    TempFolder Folder;
    EnvironmentVariable Runtime{"XDG_RUNTIME_DIR", Folder.Path().string()};
};

MeetingPlace::MeetingPlace() : Place_(std::make_unique<Place>()) {}

MeetingPlace::~MeetingPlace() = default;

struct RunningCopy::Process : Program {
    using Program::Program;

    std::string ProcFile(const std::string& name) const {
        return "/proc/" + std::to_string(Program::Process()) + "/" + name;
    }
    char State() const {
        std::ifstream file(ProcFile("stat"));
        std::string process;
        std::string name;
        char state = 0;
        file >> process >> name >> state;
        return state;
    }
};

RunningCopy::RunningCopy(const std::string& name)
    : Process_(new Process(std::vector<std::string>{RUNNING_COPY, name})) {
    EXPECT_TRUE(Process_->Prints("running")) << Process_->Err();
}

RunningCopy::~RunningCopy() = default;

bool RunningCopy::CameForward() const {
    return Process_->Prints("forward");
}

bool RunningCopy::WasAsked() const {
    return Process_->Out().find("forward") != std::string::npos;
}

void RunningCopy::Kill() {
    Process_->Signal(SIGKILL);
    Process_->Wait();
}

void RunningCopy::End() {
    Process_->Signal(SIGTERM);
    Process_->Wait();
}

void RunningCopy::Stop() const {
    Process_->Signal(SIGSTOP);
    EXPECT_TRUE(Eventually([this] { return Process_->State() == 'T'; }));
}

void RunningCopy::Continue() const {
    Process_->Signal(SIGCONT);
}

long RunningCopy::Memory() const {
    std::ifstream file(Process_->ProcFile("statm"));
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * 4;
}

}  // namespace burnwick::test
