#pragma once

#include <string>

namespace burnwick {

// What the system's list of devices says of the port of this name ("COM5"): "FTDI USB Serial Port".
// "Serial port" when it says nothing.
std::string DescribePort(const std::string& name);

}  // namespace burnwick
