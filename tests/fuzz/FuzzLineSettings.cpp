#include <string>

#include "fuzz/Input.h"
#include "platform/serial/LineSettings.h"

// Any text as the settings of a line.

namespace {

using burnwick::test::Input;
using burnwick::test::Require;

std::string TextOf(const burnwick::LineSettings& settings) {
    return std::to_string(settings.Baud) + "," + settings.Parity + "," + std::to_string(settings.DataBits)
           + "," + std::to_string(settings.StopBits);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Input(data, size).TakeText(size);
    const auto settings = burnwick::ParseLineSettings(text);
    if (!settings) {
        return 0;
    }
    Require(settings->Baud > 0 && settings->Baud <= 4'000'000, "a speed that a line can have");
    Require(std::string("NEO").find(settings->Parity) != std::string::npos, "a parity that a line can have");
    Require(settings->DataBits >= 5 && settings->DataBits <= 8, "data bits that a line can have");
    Require(settings->StopBits == 1 || settings->StopBits == 2, "stop bits that a line can have");
    Require(burnwick::ParseLineSettings(TextOf(*settings)) == settings, "written out, it reads the same");
    return 0;
}
