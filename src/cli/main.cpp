#include <cstdlib>
#include <iostream>

#include "cli/CommandLine.h"
#include "platform/Interrupt.h"
#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "settings/modUtility.h"

namespace {

// Kept to the very end of the process: a request that comes when the work is done must not change the outcome
// that was told.
burnwick::Interrupt* Caught = nullptr;

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

int main(int argc, char* argv[]) {
    using namespace burnwick;
    KeepStandardStreams();
    SurviveFailedWrites();
    std::ios::sync_with_stdio(false);
    const auto folder = ProgramFolder();
    modUtility::SetIniPath(folder / "Burnwick.ini");
    const auto loop = NewSystemLoop();
    const bool rewritable = ErrorOutputIsTerminal() && Variable("TERM") != "dumb";
    cli::Environment environment{
        .Out = std::cout,
        .Err = std::cerr,
        .ErrColumns = rewritable ? ErrorOutputColumns() : 0,
        .Color = Variable("NO_COLOR").empty(),
        .Trace = Variable("BURNWICK_DEBUG") == "1",
        .Loop = *loop,
        .Setting = modUtility::ReadIniValue,
        .Store = modUtility::WriteIniValue,
        .ProgramFolder = folder,
        .NewDevice = NewSerialDevice,
        .CatchInterrupts =
            [&loop](auto request) { Caught = CatchInterrupts(*loop, std::move(request)).release(); },
        .InhibitSleep = InhibitSleep,
    };
    return cli::RunCommandLine({argv + 1, argv + argc}, environment);
}
