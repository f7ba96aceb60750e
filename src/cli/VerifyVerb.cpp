#include "cli/VerifyVerb.h"

#include <CLI/CLI.hpp>

#include "cli/FlashRun.h"

namespace burnwick::cli {

CLI::App& VerifyVerb::AddTo(CLI::App& app) {
    CLI::App& verb = *app.add_subcommand("verify", "Compare a unit's flash memory with an image file");
    verb.add_option("IMAGE", Image_, "The image file")->required();
    Options_.AddTo(verb);
    verb.footer("Example:\n  burnwick-cli verify firmware.bin --port COM5 --baud 115200");
    return verb;
}

int VerifyVerb::Execute(Environment& environment) {
    return FlashRun(environment, Options_).Verify(Image_);
}

}  // namespace burnwick::cli
