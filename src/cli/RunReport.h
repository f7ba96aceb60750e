#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Environment.h"
#include "cli/ExitStatus.h"
#include "job/Verification.h"

namespace burnwick::cli {

// What came of a run.
struct RunReport {
    ExitStatus Status = Done;
    std::string Error;  // one line for the user; empty when all went well
    int Port = 0;       // COM number; 0 when the run ended before one was chosen
    int Baud = 0;       // bit/s that the link reached; 0 when it never came to a contact
    int Blocks = 0;     // sent or asked for, in the last transfer
    int TotalBlocks = 0;
    double ElapsedSeconds = 0;  // of the last transfer
    std::vector<std::string> Messages;
    std::optional<burnwick::Verdict> Verdict;  // of a verification that came to one
};

// Tells what the run's own lines have not told: the error, and the JSON object when it is wanted. Gives the
// exit status.
int Tell(Environment& environment, bool json, const RunReport& report);

}  // namespace burnwick::cli
