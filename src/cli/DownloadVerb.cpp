#include "cli/DownloadVerb.h"

namespace burnwick::cli {

void DownloadVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("IMAGE", Image_, "The image file");
    arguments.AddFlag("--verify", Verify_, "Then read the unit's flash back, and compare it with the image");
    Options_.Declare(arguments);
    arguments.AddExample("burnwick-cli download firmware.bin --port COM5 --baud 115200 --verify");
}

int DownloadVerb::Execute(Environment& environment) {
    return FlashRun(environment, Options_).Download(Image_, Verify_);
}

}  // namespace burnwick::cli
