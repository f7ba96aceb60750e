#include "platform/serial/windows/ComLine.h"

namespace burnwick {

namespace {

BYTE ParityOf(const LineSettings& settings) {
    switch (settings.Parity) {
        case 'E':
            return EVENPARITY;
        case 'O':
            return ODDPARITY;
        default:
            return NOPARITY;
    }
}

DCB TransparentLine(DCB line, const LineSettings& settings) {
    line.BaudRate = settings.Baud;
    line.ByteSize = static_cast<BYTE>(settings.DataBits);
    line.Parity = ParityOf(settings);
    line.StopBits = settings.StopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
    line.fBinary = TRUE;
    line.fParity = settings.Parity == 'N' ? FALSE : TRUE;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fDsrSensitivity = FALSE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fErrorChar = FALSE;
    line.fNull = FALSE;
    line.fAbortOnError = FALSE;
    // Many level converters draw their power from these two.
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    return line;
}

bool SameFrame(const DCB& one, const DCB& other) {
    return one.BaudRate == other.BaudRate && one.ByteSize == other.ByteSize && one.Parity == other.Parity
           && one.StopBits == other.StopBits;
}

}  // namespace

std::optional<DCB> LineOf(HANDLE port) {
    DCB line{};
    line.DCBlength = sizeof line;
    return GetCommState(port, &line) != FALSE ? std::optional(line) : std::nullopt;
}

bool SetLine(HANDLE port, const LineSettings& settings) {
    auto before = LineOf(port);
    if (!before) {
        return false;
    }
    auto wanted = TransparentLine(*before, settings);
    if (SetCommState(port, &wanted) != FALSE) {
        // A driver may be content with a part of it: only reading back tells.
        if (const auto now = LineOf(port); now && SameFrame(*now, wanted)) {
            return true;
        }
    }
    SetCommState(port, &*before);
    return false;
}

bool SetTimeouts(HANDLE port) {
    constexpr DWORD longestWrite = 1000;
    COMMTIMEOUTS timeouts{};
    timeouts.WriteTotalTimeoutConstant = longestWrite;
    return SetCommTimeouts(port, &timeouts) != FALSE;
}

bool DriverHoldsOutput(HANDLE port) {
    COMSTAT state{};
    return ClearCommError(port, nullptr, &state) != FALSE && state.cbOutQue > 0;
}

}  // namespace burnwick
