#pragma once

#include <string>
#include <vector>

#include "platform/MSComm.h"
#include "ports/PortTable.h"

// Finds the machine's COM ports by opening each.
namespace burnwick::modFindCOMPorts {

// The ports from COM1 to COM16 that open, in ascending order. Leaves the control closed, on the port it had.
std::vector<int> FindCOMPorts(MSComm& control);

// A port that is there, usable or not.
struct FoundPort {
    int Number;
    std::string Device;
    std::string Description;  // what the system knows of it
    bool Usable;
    std::string Trouble;  // why it is not usable
};

// Every port whose device is present. Leaves the control as FindCOMPorts does.
std::vector<FoundPort> SurveyPorts(MSComm& control, const ReadSetting& read);

// The port that the settings name; else the first that opens; else COM1.
int ChooseStartupPort(MSComm& control, const ReadSetting& read);

}  // namespace burnwick::modFindCOMPorts
