#include "ports/PortTable.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "platform/serial/MSComm.h"
#include "platform/serial/SystemPorts.h"

namespace burnwick {

namespace {

// The number behind "COM" in either case.
std::optional<int> NumberOf(const std::string& text) {
    std::string name = text.substr(0, 3);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
    int number = 0;
    const char* end = text.data() + text.size();
    if (name != "COM" || text.size() == 3 || text[3] == '-') {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(text.data() + 3, end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

}  // namespace

std::string DeviceOf(int port, const OwnDevices& own) {
    const std::string chosen = own(port);
    return chosen.empty() ? SystemDeviceOf(port) : chosen;
}

std::optional<PortChoice> ParsePortChoice(const std::string& text, const OwnDevices& own) {
    if (const auto number = NumberOf(text)) {
        const bool exists = *number >= MSComm::FirstPort && *number <= MSComm::LastPort;
        return PortChoice{*number, exists ? DeviceOf(*number, own) : ""};
    }
    if (text.find_first_of("/\\") == std::string::npos) {
        return std::nullopt;
    }
    for (int number = MSComm::FirstPort; number <= MSComm::LastPort; ++number) {
        if (SameDevice(DeviceOf(number, own), text)) {
            return PortChoice{number, text};
        }
    }
    return PortChoice{MSComm::LastPort, text};
}

std::string GetBaudRateSetting(const std::string& stored) {
    const char index = stored.empty() ? '0' : stored.front();
    if (index == '1') {
        return "115200";
    }
    return index >= '2' && index <= '9' ? "0" : "57600";
}

}  // namespace burnwick
