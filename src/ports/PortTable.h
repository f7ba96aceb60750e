#pragma once

#include <functional>
#include <optional>
#include <string>

namespace burnwick {

// The device that the user's own table gives a COM number; empty when it gives none.
using OwnDevices = std::function<std::string(int port)>;

// The device of a COM number: the user's own, or else that of the system's table.
std::string DeviceOf(int port, const OwnDevices& own);

// A port as a user names it.
struct PortChoice {
    int Number = 1;
    std::string Device;
};

// Reads "COM3", or the path of a device: that is used under the number that leads to it, or else as COM16.
// Nothing when the text is neither. A number outside COM1 to COM16 is given as it stands, without a device.
std::optional<PortChoice> ParsePortChoice(const std::string& text, const OwnDevices& own);

// The speed text for the stored index, of which the first character counts: "57600" for 0, and for what is no
// number; "115200" for 1; "0" for any other.
std::string GetBaudRateSetting(const std::string& stored);

}  // namespace burnwick
