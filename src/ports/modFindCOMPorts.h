#pragma once

#include <string>
#include <vector>

#include "platform/MSComm.h"
#include "ports/PortTable.h"

// Finds the machine's COM ports by opening each.
namespace burnwick::modFindCOMPorts {

// A port that is there, usable or not.
struct FoundPort {
    int Number;
    std::string Device;
    std::string Description;  // what the system knows of it
    bool Usable;
    std::string Trouble;  // why it is not usable
};

// Every port from COM1 to COM16 whose device is present, in ascending order. Leaves the control closed, on
// the port it had.
std::vector<FoundPort> SurveyPorts(MSComm& control, const ReadSetting& read);

// The port that the settings name; when they name none, the first that opens, which they then do; else the
// one that the control has. Leaves the control closed.
int ChooseStartupPort(MSComm& control, const ReadSetting& read, const WriteSetting& write);

}  // namespace burnwick::modFindCOMPorts
