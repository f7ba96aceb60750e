#pragma once

#include <termios.h>

#include <optional>

#include "platform/serial/LineSettings.h"

namespace burnwick {

// Sets the line at once: bytes pass unchanged both ways, no flow control, modem lines ignored. False, with
// the line as it was, when it cannot be set so.
bool SetLine(int fd, const LineSettings& settings);

// Asks the driver to hand bytes on without gathering them first. Gives the driver's flags of before when that
// changed them.
std::optional<int> ShortenLatency(int fd);

// Puts back what ShortenLatency gave.
void SetDriverFlags(int fd, int flags);

}  // namespace burnwick
