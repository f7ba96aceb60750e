#include "platform/process/StandardStreams.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <cstdio>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

namespace {

bool IsOpen(HANDLE handle) {
    return handle != nullptr && handle != INVALID_HANDLE_VALUE
           && (GetFileType(handle) != FILE_TYPE_UNKNOWN || GetLastError() == NO_ERROR);
}

HANDLE ErrorOutput() {
    return GetStdHandle(STD_ERROR_HANDLE);
}

}  // namespace

void KeepStandardStreams() {
    struct Stream {
        DWORD Handle;
        std::FILE* File;
        const wchar_t* Mode;
    };
    const std::array<Stream, 3> streams{{{STD_INPUT_HANDLE, stdin, L"rb"},
                                         {STD_OUTPUT_HANDLE, stdout, L"wb"},
                                         {STD_ERROR_HANDLE, stderr, L"wb"}}};
    for (const auto& [name, file, mode] : streams) {
        SetLastError(NO_ERROR);
        if (!IsOpen(GetStdHandle(name)) && _wfreopen(L"NUL", mode, file) != nullptr) {
            SetStdHandle(name, reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))));
        }
    }
}

bool ErrorOutputIsTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(ErrorOutput(), &mode) != 0
           // What rewrites a line is control sequences.
           && SetConsoleMode(ErrorOutput(), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

int ErrorOutputColumns() {
    constexpr int usual = 80;
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    const bool known = GetConsoleScreenBufferInfo(ErrorOutput(), &screen) != 0;
    const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
    return known && columns > 1 ? columns : usual;
}

void SurviveFailedWrites() {
    // A drive that is gone would bring up a box of the system's, and the run would wait for its answer.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

}  // namespace burnwick
