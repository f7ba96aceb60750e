#pragma once

#include <string>

#include "ports/PortTable.h"

namespace burnwick {

// How much the log is to hold, as the settings say; where they say nothing, "&All" is set there first.
std::string LogOption(const ReadSetting& read, const WriteSetting& write);

}  // namespace burnwick
