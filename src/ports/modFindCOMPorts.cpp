#include "ports/modFindCOMPorts.h"

#include <cstdlib>
#include <functional>

#include "platform/SystemPorts.h"

namespace burnwick::modFindCOMPorts {

namespace {

using Visit = std::function<void(int port, const CommResult& error)>;

// Opens and closes each port in turn.
void ProbeAll(MSComm& control, const Visit& visit) {
    const int remembered = control.CommPort();
    if (control.PortOpen()) {
        control.SetPortOpen(false);
    }
    for (int port = MSComm::FirstPort; port <= MSComm::LastPort; ++port) {
        control.SetCommPort(port);
        const CommResult error = control.SetPortOpen(true);
        if (!error) {
            control.SetPortOpen(false);
        }
        visit(port, error);
    }
    control.SetCommPort(remembered);
}

}  // namespace

std::vector<int> FindCOMPorts(MSComm& control) {
    std::vector<int> found;
    ProbeAll(control, [&](int port, const CommResult& error) {
        if (!error) {
            found.push_back(port);
        }
    });
    return found;
}

std::vector<FoundPort> SurveyPorts(MSComm& control, const ReadSetting& read) {
    std::vector<FoundPort> found;
    ProbeAll(control, [&](int port, const CommResult& error) {
        const std::string device = DeviceOf(port, read);
        if (!error || DevicePresent(device)) {
            found.push_back({port, device, DescribeDevice(device), !error, error ? error->Description : ""});
        }
    });
    return found;
}

int ChooseStartupPort(MSComm& control, const ReadSetting& read) {
    const std::string stored = read("COMPort", "COM");
    if (stored.empty()) {
        const auto found = FindCOMPorts(control);
        return found.empty() ? MSComm::FirstPort : found.front();
    }
    const long number = std::strtol(stored.c_str(), nullptr, 10);
    return number >= MSComm::FirstPort && number <= MSComm::LastPort ? static_cast<int>(number)
                                                                     : MSComm::FirstPort;
}

}  // namespace burnwick::modFindCOMPorts
