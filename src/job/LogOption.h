#pragma once

#include <string>

#include "platform/Setting.h"

namespace burnwick {

// How much the log is to hold, as the settings say; where they say nothing it is "&All", and they say so from
// then on.
std::string LogOption(const ReadSetting& read, const WriteSetting& write);

}  // namespace burnwick
