#include "cli/PortsVerb.h"

#include <iomanip>
#include <nlohmann/json.hpp>

#include "ports/modFindCOMPorts.h"

namespace burnwick::cli {

namespace {

using Ports = std::vector<FoundPort>;

std::string NameOf(const FoundPort& port) {
    return "COM" + std::to_string(port.Number);
}

// What is known of the port, and why it is of no use if so.
std::string DescriptionOf(const FoundPort& port) {
    return port.Usable ? port.Description : port.Description + ": " + port.Trouble;
}

void PrintJson(std::ostream& out, const Ports& ports) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const auto& port : ports) {
        list.push_back({{"port", NameOf(port)},
                        {"device", port.Device},
                        {"description", DescriptionOf(port)},
                        {"usable", port.Usable}});
    }
    out << list.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << std::endl;
}

void PrintTable(std::ostream& out, const Ports& ports) {
    for (const auto& port : ports) {
        out << std::left << std::setw(6) << NameOf(port) << ' ' << std::setw(14) << port.Device << ' '
            << (port.Usable ? "usable    " : "not usable") << "  " << DescriptionOf(port) << '\n';
    }
    out << std::flush;
}

}  // namespace

void PortsVerb::Declare(Arguments& arguments) {
    arguments.AddFlag("--json", Json_, "Print a JSON array");
    arguments.AddExample("burnwick-cli ports");
}

int PortsVerb::Execute(Environment& environment) {
    MSComm control(environment.Loop, environment.NewDevice(),
                   [&](int port) { return DeviceOf(port, environment.Setting); });
    const Ports ports = modFindCOMPorts::SurveyPorts(control, environment.Setting);
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
