#include "cli/PortsVerb.h"

#include <iomanip>

#include "cli/JsonOutput.h"
#include "ports/modFindCOMPorts.h"

namespace burnwick::cli {

namespace {

using Ports = std::vector<FoundPort>;

void PrintTable(std::ostream& out, const Ports& ports) {
    for (const auto& port : ports) {
        out << std::left << std::setw(6) << PortName(port.Number) << ' ' << std::setw(14) << port.Device
            << ' ' << (port.Usable ? "usable    " : "not usable") << "  " << DescriptionOf(port) << '\n';
    }
    out << std::flush;
}

}  // namespace

void PortsVerb::Declare(Arguments& arguments) {
    arguments.AddFlag("--json", Json_, "Print a JSON array");
    arguments.AddExample("burnwick-cli ports");
}

int PortsVerb::Execute(Environment& environment) {
    const OwnDevices devices = PortDevices(environment.Settings);
    MSComm control(environment.Loop, environment.NewDevice(),
                   [&](int port) { return DeviceOf(port, devices); });
    const Ports ports = modFindCOMPorts::SurveyPorts(control, devices);
    if (Json_) {
        PrintJson(environment.Out, ports);
    } else if (ports.empty()) {
        environment.Out << "No COM Port Available" << std::endl;
    } else {
        PrintTable(environment.Out, ports);
    }
    return Done;
}

}  // namespace burnwick::cli
