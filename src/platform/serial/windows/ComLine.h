#pragma once

#include <optional>

#include "platform/process/windows/SystemHeaders.h"
#include "platform/serial/LineSettings.h"

namespace burnwick {

// Nothing when the port tells no settings: it is no serial port.
std::optional<DCB> LineOf(HANDLE port);

// Sets the line at once: bytes pass unchanged both ways, no flow control, modem lines ignored. False, with
// the line as it was, when it cannot be set so.
bool SetLine(HANDLE port, const LineSettings& settings);

// A read ends when it has all that it asked for, however long that takes; a write after a second, done or
// not.
bool SetTimeouts(HANDLE port);

// True while the driver has bytes that it has not handed on to the adapter.
bool DriverHoldsOutput(HANDLE port);

}  // namespace burnwick
