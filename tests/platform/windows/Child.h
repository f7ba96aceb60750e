#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick::test {

// The program that tests start; it is beside the test program.
inline std::filesystem::path ChildProgram() {
    std::array<wchar_t, 32'768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::filesystem::path(path.data()).parent_path() / "windows_child.exe";
}

inline std::wstring Quoted(const std::filesystem::path& path) {
    return L'"' + path.native() + L'"';
}

// Another process, whose standard output is read here; ended with its object. The program is the command
// line's first word, unless it is named.
class Child {
public:
    explicit Child(std::wstring commandLine, DWORD flags = 0, const std::filesystem::path& program = {}) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        CreatePipe(&readEnd, &writeEnd, &inherited, 0);
        Output_.Reset(readEnd);
        const UniqueHandle itsOutput(writeEnd);
        SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = writeEnd;
        start.hStdError = writeEnd;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(program.empty() ? nullptr : program.c_str(), commandLine.data(), nullptr, nullptr,
                           TRUE, flags, nullptr, nullptr, &start, &process)
            != 0) {
            Process_.Reset(process.hProcess);
            CloseHandle(process.hThread);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { Kill(); }

    // The child program with what it is to do.
    static std::wstring Doing(const std::wstring& what) { return Quoted(ChildProgram()) + L' ' + what; }

    // Waits for the next line, without its end; empty when the process has ended.
    std::string Line() {
        std::string line;
        char c = 0;
        for (DWORD got = 0; ::ReadFile(Output_.Get(), &c, 1, &got, nullptr) != 0 && got == 1 && c != '\n';) {
            line += c;
        }
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        return line;
    }

    // All that it still prints until its end.
    std::string Rest() {
        std::string text;
        char c = 0;
        for (DWORD got = 0; ::ReadFile(Output_.Get(), &c, 1, &got, nullptr) != 0 && got == 1;) {
            text += c;
        }
        return text;
    }

    // Waits for its end.
    DWORD ExitCode() {
        DWORD code = 0;
        WaitForSingleObject(Process_.Get(), INFINITE);
        GetExitCodeProcess(Process_.Get(), &code);
        return code;
    }

    void Kill() {
        if (Process_) {
            TerminateProcess(Process_.Get(), 1);
            WaitForSingleObject(Process_.Get(), INFINITE);
            Process_.Reset();
        }
    }

private:
    UniqueHandle Output_;
    UniqueHandle Process_;
};

// Waits ten seconds at most for a file that another process makes whole. Who renames it lets nobody read it
// until that is done.
inline bool Appears(const std::filesystem::path& path) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000 && !std::ifstream(path).is_open(); ++i) {
        std::this_thread::sleep_for(10ms);
    }
    return std::ifstream(path).is_open();
}

}  // namespace burnwick::test
