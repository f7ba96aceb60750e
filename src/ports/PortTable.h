#pragma once

#include <optional>
#include <string>

#include "platform/Setting.h"

namespace burnwick {

// The device of a COM number: what section "Ports" of the settings says, or else the system's own table.
std::string DeviceOf(int port, const ReadSetting& read);

// A port as a user names it.
struct PortChoice {
    int Number = 1;
    std::string Device;
};

// Reads "COM3", or the path of a device: that is used under the number that leads to it, or else as COM16.
// Nothing when the text is neither. A number outside COM1 to COM16 is given as it stands, without a device.
std::optional<PortChoice> ParsePortChoice(const std::string& text, const ReadSetting& read);

// The speed text for the stored index, of which the first character counts: "57600" for 0, and for what is no
// number; "115200" for 1; "0" for any other.
std::string GetBaudRateSetting(const ReadSetting& read);

}  // namespace burnwick
