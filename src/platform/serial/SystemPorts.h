#pragma once

#include <string>

namespace burnwick {

// The device that the system uses for a COM number (1 to 16) when the settings name no other.
std::string SystemDeviceOf(int port);

// True when the device is there, usable or not.
bool DevicePresent(const std::string& device);

// What the system knows of the adapter behind the device ("FTDI FT232R USB UART, serial number A50285BI");
// "Serial port" when it knows nothing.
std::string DescribeDevice(const std::string& device);

// True when both paths lead to the same device, through links or not.
bool SameDevice(const std::string& one, const std::string& other);

}  // namespace burnwick
