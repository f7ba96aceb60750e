#pragma once

#include <filesystem>
#include <string>

namespace burnwick {

// DescribeDevice() with the system's device tree at `sysfs`.
std::string DescribeDeviceIn(const std::filesystem::path& sysfs, const std::string& device);

}  // namespace burnwick
