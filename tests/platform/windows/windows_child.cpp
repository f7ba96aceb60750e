// What tests let other processes do. Prints a line for what it has done; what lasts, lasts until it is
// killed.

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/files/FileLock.h"
#include "platform/files/ProgramFolder.h"
#include "platform/files/ReplaceFile.h"
#include "platform/files/Utf8Path.h"
#include "platform/loop/MessageLoop.h"
#include "platform/process/Interrupt.h"
#include "platform/process/ProcessText.h"
#include "platform/process/StandardStreams.h"
#include "platform/process/windows/SystemHeaders.h"
#include "platform/process/windows/UniqueHandle.h"
#include "platform/process/windows/WideText.h"
#include "settings/modUtility.h"

#include <shellapi.h>

namespace {

using namespace burnwick;
using namespace std::chrono_literals;
using Arguments = std::vector<std::wstring>;

void Say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

int Lock(const Arguments& arguments) {
    const auto lock = LockFile(arguments.at(0), 0ms);
    Say(lock ? "locked" : "refused");
    Sleep(INFINITE);
    return 0;
}

// As a program holds a port, or a file that nobody else may have meanwhile.
int Hold(const Arguments& arguments) {
    constexpr DWORD forNobodyElse = 0;
    const UniqueHandle held(CreateFileW(arguments.at(0).c_str(), GENERIC_READ | GENERIC_WRITE, forNobodyElse,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    Say(held ? "held" : "refused");
    Sleep(INFINITE);
    return 0;
}

int Replace(const Arguments& arguments) {
    for (int i = 0;; ++i) {
        ReplaceFile(arguments.at(0), std::string(i % 2 == 0 ? 200'000 : 300'000, i % 2 == 0 ? '2' : '3'));
        if (i == 1) {
            Say("replaced");
        }
    }
}

int Folder(const Arguments&) {
    Say(Utf8Text(ProgramFolder()));
    return 0;
}

// So many values, each under a key of its own.
int WriteSettings(const Arguments& arguments) {
    modUtility::SetIniPath(arguments.at(0));
    const auto section = NarrowText(arguments.at(1));
    const int count = std::stoi(arguments.at(2));
    for (int i = 0; i < count; ++i) {
        modUtility::WriteIniValue(section, "Key" + std::to_string(i), std::to_string(i));
        if (i == 0) {
            Say("written");
        }
    }
    return 0;
}

// As a program has them that is started from where this one lies.
int OwnSettings(const Arguments&) {
    modUtility::SetIniPath(ProgramFolder() / "Burnwick.ini");
    modUtility::WriteIniValue("COMPort", "COM", "5");
    Say(modUtility::ReadIniValue("COMPort", "COM"));
    return 0;
}

std::string InEightBit(const std::wstring& text) {
    std::string narrow(2 * text.size() + 1, '\0');
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_ACP, 0, text.c_str(), -1, narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr)));
    return narrow;
}

// This program asks for no UTF-8: so these are the system's own 8-bit characters.
int CodePage(const Arguments&) {
    Say(std::to_string(GetACP()));
    return 0;
}

// As a program does that knows no Unicode.
int WriteProfile(const Arguments& arguments) {
    const auto path = InEightBit(arguments.at(0));
    const auto value = InEightBit(arguments.at(1));
    return WritePrivateProfileStringA("Path", "LastPath", value.c_str(), path.c_str()) != 0 ? 0 : 1;
}

// Into the file that the environment names: the whole command line, what the program takes for the text
// behind its name, its words, and the working folder.
int Note(const Arguments&) {
    std::wstring note(32'767, L'\0');
    note.resize(GetEnvironmentVariableW(L"BURNWICK_NOTE", note.data(), 32'767));
    std::string words;
    for (const auto& word : ProgramArguments(0, nullptr)) {
        words += (words.empty() ? "" : " ") + word;
    }
    ReplaceFile(note, NarrowText(GetCommandLineW()) + '\n' + CommandText({}) + '\n' + words + '\n'
                          + Utf8Text(std::filesystem::current_path()) + '\n');
    return 0;
}

// Ctrl+C for all processes on this console, which has but this one.
void PressCtrlC(int times) {
    for (int i = 0; i < times; ++i) {
        if (GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) == 0) {
            Say("no console");
        }
    }
}

struct Catcher {
    std::unique_ptr<MessageLoop> Loop = NewSystemLoop();
    int Requests = 0;
    std::unique_ptr<Interrupt> Caught = CatchInterrupts(*Loop, [this] { ++Requests; });

    void Await(int requests) {
        while (Requests < requests) {
            Loop->Yield(60s);
        }
    }
};

int InterruptTwice(const Arguments&) {
    Catcher catcher;
    for (const int requests : {1, 2}) {
        PressCtrlC(1);
        catcher.Await(requests);
        Say(std::to_string(catcher.Requests));
    }
    return 0;
}

int InterruptHeld(const Arguments&) {
    HoldInterrupts();
    PressCtrlC(3);
    Catcher catcher;
    catcher.Await(3);
    Say(std::to_string(catcher.Requests));
    return 0;
}

int InterruptLate(const Arguments&) {
    HoldInterrupts();
    {
        const Catcher catcher;
        PressCtrlC(1);
    }
    PressCtrlC(1);
    Say("alive");
    return 7;
}

int InterruptAfter(const Arguments&) {
    { const Catcher catcher; }
    PressCtrlC(1);
    Sleep(60'000);
    return 7;
}

int Streams(const Arguments&) {
    CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
    SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
    KeepStandardStreams();
    DWORD written = 0;
    const bool writable =
        WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "lost", 4, &written, nullptr) != 0 && written == 4;
    return writable ? 7 : 1;
}

}  // namespace

int main() {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::vector<std::wstring> all(words, words + count);
    const std::map<std::wstring, std::function<int(const Arguments&)>> verbs{
        {L"lock", Lock},
        {L"hold", Hold},
        {L"replace", Replace},
        {L"folder", Folder},
        {L"write-settings", WriteSettings},
        {L"own-settings", OwnSettings},
        {L"code-page", CodePage},
        {L"write-profile", WriteProfile},
        {L"interrupt-twice", InterruptTwice},
        {L"interrupt-held", InterruptHeld},
        {L"interrupt-late", InterruptLate},
        {L"interrupt-after", InterruptAfter},
        {L"streams", Streams},
    };
    const auto verb = all.size() > 1 ? verbs.find(all[1]) : verbs.end();
    // Who starts it as his own program gives it whatever he likes.
    return verb != verbs.end() ? verb->second({all.begin() + 2, all.end()}) : Note({});
}
