#include "cli/DownloadVerb.h"

#include <CLI/CLI.hpp>

namespace burnwick::cli {

CLI::App& DownloadVerb::AddTo(CLI::App& app) {
    CLI::App& verb = *app.add_subcommand("download", "Program a unit's flash memory from an image file");
    verb.add_option("IMAGE", Image_, "The image file")->required();
    verb.add_flag("--verify", Verify_, "Then read the unit's flash back, and compare it with the image");
    Options_.AddTo(verb);
    verb.footer("Example:\n  burnwick-cli download firmware.bin --port COM5 --baud 115200 --verify");
    return verb;
}

int DownloadVerb::Execute(Environment& environment) {
    return FlashRun(environment, Options_).Download(Image_, Verify_);
}

}  // namespace burnwick::cli
