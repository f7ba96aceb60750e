#include "platform/ProcessText.h"

#include <windows.h>
// After it: what this one declares stands on its types.
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/windows/WideText.h"

namespace burnwick {

namespace {

// The files that a word with wildcards names; the word itself when there is none. A wildcard cannot be part
// of a name.
std::vector<std::wstring> FilesOf(const std::wstring& word) {
    const std::size_t separator = word.find_last_of(L"\\/:");
    const std::size_t name = separator == std::wstring::npos ? 0 : separator + 1;
    if (word.find_first_of(L"*?", name) == std::wstring::npos) {
        return {word};
    }
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(word.c_str(), &found);
    for (bool more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &found) != 0) {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(word.substr(0, name) + found.cFileName);
        }
    }
    if (search != INVALID_HANDLE_VALUE) {
        FindClose(search);
    }
    std::sort(files.begin(), files.end());
    return files.empty() ? std::vector{word} : files;
}

UINT ConsoleBefore = 0;

}  // namespace

// What the C library hands over has been through the system's 8-bit characters, and lost what they cannot
// say.
std::vector<std::string> ProgramArguments(int /*argc*/, char* const* /*argv*/) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i) {
        for (const auto& file : FilesOf(words.get()[i])) {
            arguments.push_back(NarrowText(file));
        }
    }
    return arguments;
}

std::string EnvironmentText(const char* name) {
    const std::wstring wideName = WideText(name);
    std::wstring value;
    // Another thread may change it between the two calls.
    for (DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0); size > value.size();) {
        value.resize(size);
        size = GetEnvironmentVariableW(wideName.c_str(), value.data(), size);
        if (size < value.size()) {
            value.resize(size);
            return NarrowText(value);
        }
    }
    return {};
}

void PrintUnchanged() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // The console is the caller's too, who gets it back as it was.
    ConsoleBefore = GetConsoleOutputCP();
    if (ConsoleBefore != 0 && ConsoleBefore != CP_UTF8 && SetConsoleOutputCP(CP_UTF8) != 0) {
        std::atexit([] { SetConsoleOutputCP(ConsoleBefore); });
    }
}

}  // namespace burnwick
