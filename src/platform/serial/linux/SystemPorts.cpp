#include "platform/serial/SystemPorts.h"

#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <optional>

#include "platform/serial/linux/DeviceDescription.h"

namespace burnwick {

namespace {

std::optional<struct stat> StatusOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

}  // namespace

std::string SystemDeviceOf(int port) {
    struct Range {
        int First;
        int Last;
        const char* Name;
    };
    constexpr std::array<Range, 3> ranges{
        {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}}};
    for (const auto& range : ranges) {
        if (port >= range.First && port <= range.Last) {
            return range.Name + std::to_string(port - range.First);
        }
    }
    return {};
}

bool DevicePresent(const std::string& device) {
    const auto status = StatusOf(device);
    return status && S_ISCHR(status->st_mode);
}

std::string DescribeDevice(const std::string& device) {
    return DescribeDeviceIn("/sys", device);
}

bool SameDevice(const std::string& one, const std::string& other) {
    const auto first = StatusOf(one);
    const auto second = StatusOf(other);
    if (!first || !second) {
        // An adapter that is not plugged in still has its name.
        return std::filesystem::path(one).lexically_normal()
               == std::filesystem::path(other).lexically_normal();
    }
    if (S_ISCHR(first->st_mode) && S_ISCHR(second->st_mode)) {
        return first->st_rdev == second->st_rdev;
    }
    return first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

}  // namespace burnwick
