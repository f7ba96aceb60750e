#pragma once

#include <optional>
#include <string>
#include <variant>

#include "engine/RunResult.h"
#include "job/Verification.h"

// What a flashing job reports to its front end: plain values, in the order in which things happened.
namespace burnwick {

// Block 0 comes once, when the transfer begins; then 2 and so on.
struct BlockProgress {
    int Block = 0;
    int TotalBlock = 0;
};

struct TraceLine {
    std::string Text;
};

// A programming has succeeded: the job waits for FlashJob::Answer.
struct VerificationOffer {};

// What follows is the read-back's.
struct VerificationBegins {};

// The unit's flash was read back, and is compared with the image.
struct ComparisonBegins {};

struct VerificationEnds {
    std::string Result;  // for the display
};

// The last event of a job.
struct JobResult {
    RunResult Transfer;                          // the programming or the upload
    bool VerificationBegun = false;              // whatever came of it
    std::optional<RunResult> ReadBack{};         // nothing when it could not even be tried
    std::optional<burnwick::Verdict> Verdict{};  // nothing when there was nothing to compare
    bool ReadBackIsGone = false;                 // somebody deleted the file that it was read into
    bool ImageChanged = false;                   // since the job began; looked for only where the two differ
    std::string Unforeseen;                      // an exception's text; empty otherwise

    // The run of the link that was made last.
    const RunResult& LastRun() const { return ReadBack ? *ReadBack : Transfer; }
};

using JobEvent = std::variant<RunLine, RunTiming, BlockProgress, TraceLine, VerificationOffer,
                              VerificationBegins, ComparisonBegins, VerificationEnds, JobResult>;

// Makes one visitor of several functions.
template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

}  // namespace burnwick
