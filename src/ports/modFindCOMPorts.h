#pragma once

#include <vector>

#include "platform/serial/MSComm.h"
#include "ports/PortEntries.h"
#include "ports/PortTable.h"

// Finds the machine's COM ports by opening each.
namespace burnwick::modFindCOMPorts {

// Every port from COM1 to COM16 whose device is present, in ascending order. Leaves the control closed, on
// the port it had.
std::vector<FoundPort> SurveyPorts(MSComm& control, const OwnDevices& own);

// What the port dialog lists: the ports that open, with the control's own selected. Leaves the control
// closed, on the port it had.
PortEntries FindCOMPorts(MSComm& control, const OwnDevices& own);

// Puts the control on this port, opens it and closes it again. Tells why it did not open.
CommResult TestPort(MSComm& control, int port);

// The port whose number is stored; when nothing is, the first that opens, which is then stored; else the one
// that the control has. Leaves the control closed.
int ChooseStartupPort(MSComm& control, const std::string& stored, const std::function<void(int port)>& store);

}  // namespace burnwick::modFindCOMPorts
