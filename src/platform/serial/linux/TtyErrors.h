#pragma once

#include <string>

#include "platform/serial/CommError.h"

namespace burnwick {

// Why the device at `path` cannot be had, from the errno of the call that failed: what was tried, what the
// system said and what to do about it.
CommError DeviceError(const std::string& path, int error);

// Another program holds the device; names it when it can be seen.
CommError BusyError(const std::string& path);

}  // namespace burnwick
