#pragma once

#include <string>

#include "cli/Arguments.h"

namespace burnwick::cli {

// The options of every verb that makes a run.
struct RunOptions {
    std::string Port;  // as the user names it; empty: as the settings say
    std::string Baud;  // "9600", "57600" or "115200"; empty: as the settings say
    bool Quiet = false;
    bool Json = false;

    void Declare(Arguments& arguments);
};

}  // namespace burnwick::cli
