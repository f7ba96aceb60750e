#pragma once

#include <string>

namespace CLI {
class App;
}

namespace burnwick::cli {

// The options of every verb that makes a run.
struct RunOptions {
    std::string Port;  // as the user names it; empty: as the settings say
    std::string Baud;  // "9600", "57600" or "115200"; empty: as the settings say
    bool Quiet = false;
    bool Json = false;

    void AddTo(CLI::App& verb);
};

}  // namespace burnwick::cli
