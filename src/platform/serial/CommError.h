#pragma once

#include <optional>
#include <string>

#include "platform/serial/LineSettings.h"

namespace burnwick {

// The serial control's own error numbers, 8000 to 8020.
enum class CommErrorNumber {
    NotWhileOpen = 8000,       // the port is open, and this can be changed on a closed one only
    InvalidPortNumber = 8002,  // no such COM number
    NotSerial = 8006,          // the device is no serial port, or there is none
    UnusableSettings = 8009,   // the line cannot be set so
    NotPermitted = 8010,       // this user may not use the device
    NotOpen = 8018,            // the port is closed, and this needs an open one
    Busy = 8019,               // another program has the port open
    Broken = 8020,             // the device reports an error of its own
};

// Why the serial control refused; the description is a sentence for the user, without its full stop.
struct CommError {
    CommErrorNumber Number;
    std::string Description;
};

// Nothing is success.
using CommResult = std::optional<CommError>;

// What every system says the same way. `device` is the name that the user knows the device by.
CommError MissingDeviceError(const std::string& device);
CommError NotSerialError(const std::string& device);
CommError SettingsError(const std::string& device, const LineSettings& settings);

}  // namespace burnwick
