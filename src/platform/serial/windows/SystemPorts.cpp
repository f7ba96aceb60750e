#include "platform/serial/SystemPorts.h"

#include "platform/process/windows/SystemHeaders.h"
#include "platform/process/windows/WideText.h"
#include "platform/serial/MSComm.h"
#include "platform/serial/windows/ComNames.h"
#include "platform/serial/windows/PortDescription.h"

namespace burnwick {

namespace {

// What the name stands for inside the system ("\Device\Serial0"); empty when there is no such device.
std::wstring TargetOf(const std::string& name) {
    constexpr std::size_t longestTarget = 32768;
    std::wstring target(longestTarget, L'\0');
    const DWORD length =
        QueryDosDeviceW(WideText(name).c_str(), target.data(), static_cast<DWORD>(target.size()));
    // Several texts may follow each other; the first is the one that holds.
    return length == 0 ? std::wstring() : target.substr(0, target.find(L'\0'));
}

// A name that the system would take for another one, or for all of them.
bool IsName(const std::string& name) {
    return !name.empty() && name.find_first_of("/\\") == std::string::npos
           && name.find('\0') == std::string::npos;
}

}  // namespace

std::string SystemDeviceOf(int port) {
    const bool exists = port >= MSComm::FirstPort && port <= MSComm::LastPort;
    return exists ? ComPath("COM" + std::to_string(port)) : "";
}

bool DevicePresent(const std::string& device) {
    const auto name = ComName(device);
    return IsName(name) && !TargetOf(name).empty();
}

std::string DescribeDevice(const std::string& device) {
    return DescribePort(ComName(device));
}

bool SameDevice(const std::string& one, const std::string& other) {
    const auto name = ComName(one);
    const auto otherName = ComName(other);
    if (!IsName(name) || !IsName(otherName)) {
        return CompareStringOrdinal(WideText(one).c_str(), -1, WideText(other).c_str(), -1, TRUE)
               == CSTR_EQUAL;
    }
    const auto target = TargetOf(name);
    // An adapter that is not plugged in still has its name.
    return CompareStringOrdinal(WideText(name).c_str(), -1, WideText(otherName).c_str(), -1, TRUE)
               == CSTR_EQUAL
           || (!target.empty() && target == TargetOf(otherName));
}

}  // namespace burnwick
