#include "ports/modFindCOMPorts.h"

#include <cstdlib>

#include "platform/serial/SystemPorts.h"

namespace burnwick::modFindCOMPorts {

namespace {

// Closes the control, and puts it back on its port at the end.
class Probing {
public:
    explicit Probing(MSComm& control) : Control_(control), Remembered_(control.CommPort()) {
        if (Control_.PortOpen()) {
            Control_.SetPortOpen(false);
        }
    }
    Probing(const Probing&) = delete;
    Probing& operator=(const Probing&) = delete;
    ~Probing() { Control_.SetCommPort(Remembered_); }

private:
    MSComm& Control_;
    int Remembered_;
};

}  // namespace

std::vector<FoundPort> SurveyPorts(MSComm& control, const OwnDevices& own) {
    const Probing probing(control);
    std::vector<FoundPort> found;
    for (int port = MSComm::FirstPort; port <= MSComm::LastPort; ++port) {
        const std::string device = DeviceOf(port, own);
        const CommResult error = TestPort(control, port);
        if (!error || DevicePresent(device)) {
            found.push_back({port, device, DescribeDevice(device), !error, error ? error->Description : ""});
        }
    }
    return found;
}

PortEntries FindCOMPorts(MSComm& control, const OwnDevices& own) {
    return EntriesOf(SurveyPorts(control, own), control.CommPort());
}

CommResult TestPort(MSComm& control, int port) {
    CommResult error = control.SetCommPort(port);
    if (!error) {
        error = control.SetPortOpen(true);
    }
    if (!error) {
        control.SetPortOpen(false);
    }
    return error;
}

int ChooseStartupPort(MSComm& control, const std::string& stored,
                      const std::function<void(int port)>& store) {
    const Probing probing(control);
    if (!stored.empty()) {
        const long number = std::strtol(stored.c_str(), nullptr, 10);
        const bool exists = number >= MSComm::FirstPort && number <= MSComm::LastPort;
        return exists ? static_cast<int>(number) : control.CommPort();
    }
    const int before = control.CommPort();
    for (int port = MSComm::FirstPort; port <= MSComm::LastPort; ++port) {
        if (!TestPort(control, port)) {
            store(port);
            return port;
        }
    }
    return before;
}

}  // namespace burnwick::modFindCOMPorts
