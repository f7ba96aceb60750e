#include "cli/VerifyVerb.h"

#include "cli/FlashRun.h"

namespace burnwick::cli {

void VerifyVerb::Declare(Arguments& arguments) {
    arguments.AddRequired("IMAGE", Image_, "The image file");
    Options_.Declare(arguments);
    arguments.AddExample("burnwick-cli verify firmware.bin --port COM5 --baud 115200");
}

int VerifyVerb::Execute(Environment& environment) {
    return FlashRun(environment, Options_).Verify(Image_);
}

}  // namespace burnwick::cli
