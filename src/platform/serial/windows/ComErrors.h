#pragma once

#include <string>

#include "platform/serial/CommError.h"

namespace burnwick {

// Why the device at `path` cannot be had, from the GetLastError() of the call that failed: what was tried,
// what the system said and what to do about it.
CommError DeviceError(const std::string& path, unsigned long error);

// The system's own words for an error, without their full stop.
std::string SystemMessage(unsigned long error);

}  // namespace burnwick
