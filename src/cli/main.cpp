#include <iostream>
#include <utility>

#include "cli/CommandLine.h"
#include "job/JobThread.h"
#include "platform/files/ProgramFolder.h"
#include "platform/loop/MessageLoop.h"
#include "platform/process/Interrupt.h"
#include "platform/process/ProcessText.h"
#include "platform/process/StandardStreams.h"
#include "platform/serial/SerialDevice.h"
#include "settings/modUtility.h"

namespace {

// Kept to the very end of the process: a request that comes when the work is done must not change the outcome
// that was told.
burnwick::Interrupt* Caught = nullptr;

}  // namespace

int main(int argc, char* argv[]) {
    using namespace burnwick;
    KeepStandardStreams();
    SurviveFailedWrites();
    PrintUnchanged();
    std::ios::sync_with_stdio(false);
    const auto folder = ProgramFolder();
    modUtility::SetIniPath(folder / "Burnwick.ini");
    const auto loop = NewSystemLoop();
    const bool rewritable = ErrorOutputIsTerminal() && EnvironmentText("TERM") != "dumb";
    cli::Environment environment{
        .Out = std::cout,
        .Err = std::cerr,
        .ErrColumns = rewritable ? ErrorOutputColumns() : 0,
        .Color = EnvironmentText("NO_COLOR").empty(),
        .Trace = EnvironmentText("BURNWICK_DEBUG") == "1",
        .Loop = *loop,
        .Settings = IniSettings(),
        .ProgramFolder = folder,
        .NewDevice = NewSerialDevice,
        .NewJob = NewJobThread(*loop),
        .CatchInterrupts =
            [&loop](auto request) { Caught = CatchInterrupts(*loop, std::move(request)).release(); },
        .InhibitSleep = InhibitSleep,
    };
    return cli::RunCommandLine(ProgramArguments(argc, argv), environment);
}
