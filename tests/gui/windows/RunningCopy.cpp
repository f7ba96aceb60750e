#include "gui/RunningCopy.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "platform/process/windows/WideText.h"
#include "platform/windows/Child.h"
#include "support/Eventually.h"
#include "support/TempFolder.h"

#include <psapi.h>

namespace burnwick::test {

// The user's own: whoever runs the tests has given them one that is thrown away.
struct MeetingPlace::Place {};

MeetingPlace::MeetingPlace() = default;

MeetingPlace::~MeetingPlace() = default;

namespace {

// For a process as a whole; not among the functions that the headers tell of.
void CallForProcess(const char* function, HANDLE process) {
    using Call = LONG(NTAPI*)(HANDLE);
    const auto call = reinterpret_cast<Call>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), function)));
    EXPECT_EQ(call(process), 0);
}

UniqueHandle NewFile(const std::filesystem::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return UniqueHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::filesystem::path CopyProgram() {
    return ChildProgram().replace_filename("running_copy.exe");
}

}  // namespace

struct RunningCopy::Process {
    explicit Process(const std::string& name) {
        const UniqueHandle output = NewFile(Folder.Path() / "out");
        std::wstring commandLine = Quoted(CopyProgram()) + L" \"" + WideText(name) + L'"';
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output.Get();
        start.hStdError = output.Get();
        PROCESS_INFORMATION process{};
        if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                           &process)
            != FALSE) {
            Handle.Reset(process.hProcess);
            CloseHandle(process.hThread);
        }
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() {
        TerminateProcess(Handle.Get(), 1);
        WaitForSingleObject(Handle.Get(), INFINITE);
    }

    bool HasPrinted(const std::string& text) const {
        std::ifstream file(Folder.Path() / "out");
        return std::string(std::istreambuf_iterator<char>(file), {}).find(text) != std::string::npos;
    }

    TempFolder Folder;
    UniqueHandle Handle;
};

RunningCopy::RunningCopy(const std::string& name) : Process_(std::make_unique<Process>(name)) {
    EXPECT_TRUE(Eventually([this] { return Process_->HasPrinted("running"); }));
}

RunningCopy::~RunningCopy() = default;

bool RunningCopy::CameForward() const {
    return Eventually([this] { return Process_->HasPrinted("forward"); });
}

bool RunningCopy::WasAsked() const {
    return Process_->HasPrinted("forward");
}

void RunningCopy::Kill() {
    TerminateProcess(Process_->Handle.Get(), 1);
    WaitForSingleObject(Process_->Handle.Get(), INFINITE);
}

// A program without a window or a console hears no request.
void RunningCopy::End() {
    Kill();
}

void RunningCopy::Stop() const {
    CallForProcess("NtSuspendProcess", Process_->Handle.Get());
}

void RunningCopy::Continue() const {
    CallForProcess("NtResumeProcess", Process_->Handle.Get());
}

long RunningCopy::Memory() const {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(Process_->Handle.Get(), &counters, sizeof counters);
    return static_cast<long>(counters.WorkingSetSize / 1024);
}

}  // namespace burnwick::test
