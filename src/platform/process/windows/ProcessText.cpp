#include "platform/process/ProcessText.h"

#include <windows.h>
// After it: what this one declares stands on its types.
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/files/windows/UserFolders.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

bool AreAlike(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size()
           && (a.empty()
               || CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                       static_cast<int>(b.size()), TRUE)
                      == CSTR_EQUAL);
}

bool EndsWith(std::wstring_view name, std::wstring_view end) {
    return name.size() >= end.size() && AreAlike(name.substr(name.size() - end.size()), end);
}

// What stands behind the last wildcard. A dot at its end is in no name: "*." means names without an
// extension.
std::wstring_view EndOfNames(std::wstring_view word) {
    const auto end = word.substr(word.find_last_of(L"*?") + 1);
    return end.substr(0, end.find_last_not_of(L". ") + 1);
}

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
        // The system finds files by their short names too: "*.bin" would mean "unit.bin_old", of
        // "UNIT~1.BIN".
        const bool isNamedSo = EndsWith(found.cFileName, EndOfNames(word));
        if (isNamedSo && (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(word.substr(0, name) + found.cFileName);
        }
    }
    if (search != INVALID_HANDLE_VALUE) {
        FindClose(search);
    }
    std::sort(files.begin(), files.end());
    return files.empty() ? std::vector{word} : files;
}

// The words of a command line, the program's name among them, without their quotes.
std::vector<std::wstring> WordsOf(const wchar_t* line) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(line, &count), &LocalFree);
    return words != nullptr ? std::vector<std::wstring>(words.get(), words.get() + count)
                            : std::vector<std::wstring>();
}

bool BeginsWithWord(std::wstring_view line, std::wstring_view word) {
    return AreAlike(line.substr(0, word.size()), word)
           && (line.size() == word.size() || line[word.size()] == L' ');
}

// What an association starts has no quotes either, for all the blanks in its path.
std::wstring_view BehindProgram(std::wstring_view line) {
    const std::wstring program = ExecutablePath().native();
    if (BeginsWithWord(line, program)) {
        return line.substr(program.size());
    }
    const auto end = line.starts_with(L'"') ? line.find(L'"', 1) : line.find_first_of(L" \t");
    return end == std::wstring_view::npos ? std::wstring_view() : line.substr(end + 1);
}

std::wstring WithoutQuotesAndBlanksAround(std::wstring_view line) {
    constexpr auto blanks = L" \t";
    std::wstring text(line);
    std::erase(text, L'"');
    text.erase(text.find_last_not_of(blanks) + 1);
    text.erase(0, text.find_first_not_of(blanks));
    return text;
}

UINT ConsoleBefore = 0;

}  // namespace

// What the C library hands over has been through the system's 8-bit characters, and lost what they cannot
// say.
std::vector<std::string> ProgramArguments(int /*argc*/, char* const* /*argv*/) {
    const auto words = WordsOf(GetCommandLineW());
    std::vector<std::string> arguments;
    for (std::size_t i = 1; i < words.size(); ++i) {
        for (const auto& file : FilesOf(words[i])) {
            arguments.push_back(NarrowText(file));
        }
    }
    return arguments;
}

int WordsForToolkit(int argc) {
    return std::min(argc, 1);
}

std::string CommandText(const std::vector<std::string>& /*words*/) {
    return NarrowText(WithoutQuotesAndBlanksAround(BehindProgram(GetCommandLineW())));
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
