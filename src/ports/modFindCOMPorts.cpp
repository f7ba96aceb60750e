#include "ports/modFindCOMPorts.h"

#include <cstdlib>

#include "platform/SystemPorts.h"

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

std::vector<FoundPort> SurveyPorts(MSComm& control, const ReadSetting& read) {
    const Probing probing(control);
    std::vector<FoundPort> found;
    for (int port = MSComm::FirstPort; port <= MSComm::LastPort; ++port) {
        const std::string device = DeviceOf(port, read);
        const CommResult error = TestPort(control, port);
        if (!error || DevicePresent(device)) {
            found.push_back({port, device, DescribeDevice(device), !error, error ? error->Description : ""});
        }
    }
    return found;
}

PortEntries FindCOMPorts(MSComm& control, const ReadSetting& read) {
    return EntriesOf(SurveyPorts(control, read), control.CommPort());
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

int ChooseStartupPort(MSComm& control, const ReadSetting& read, const WriteSetting& write) {
    const Probing probing(control);
    const std::string stored = read("COMPort", "COM");
    if (!stored.empty()) {
        const long number = std::strtol(stored.c_str(), nullptr, 10);
        const bool exists = number >= MSComm::FirstPort && number <= MSComm::LastPort;
        return exists ? static_cast<int>(number) : control.CommPort();
    }
    const int before = control.CommPort();
    for (int port = MSComm::FirstPort; port <= MSComm::LastPort; ++port) {
        if (!TestPort(control, port)) {
            write("COMPort", "COM", std::to_string(port));
            return port;
        }
    }
    return before;
}

}  // namespace burnwick::modFindCOMPorts
