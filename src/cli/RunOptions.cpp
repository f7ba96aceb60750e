#include "cli/RunOptions.h"

#include <CLI/CLI.hpp>

namespace burnwick::cli {

void RunOptions::AddTo(CLI::App& verb) {
    verb.add_option("--port", Port, "COM1 to COM16, or the path of a device (default: the settings')")
        ->type_name("PORT");
    verb.add_option("--baud", Baud, "9600, 57600 or 115200 bit/s (default: the settings')")
        ->type_name("SPEED")
        ->check(CLI::IsMember({"9600", "57600", "115200"}));
    verb.add_flag("--quiet", Quiet, "Print errors only");
    verb.add_flag("--json", Json, "Print one JSON object instead of the run's lines");
}

}  // namespace burnwick::cli
