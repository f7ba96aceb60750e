#include "cli/RunOptions.h"

namespace burnwick::cli {

void RunOptions::Declare(Arguments& arguments) {
    arguments.AddOption("--port", Port, "PORT",
                        "COM1 to COM16, or the path of a device (default: the settings')");
    arguments.AddChoice("--baud", Baud, "SPEED", {"9600", "57600", "115200"},
                        "9600, 57600 or 115200 bit/s (default: the settings')");
    arguments.AddFlag("--quiet", Quiet, "Print errors only");
    arguments.AddFlag("--json", Json, "Print one JSON object instead of the run's lines");
}

}  // namespace burnwick::cli
