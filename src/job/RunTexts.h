#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/RunResult.h"

namespace burnwick {

// What display and labels show in the course of a run; the log's record is made from them.
struct RunTexts {
    std::vector<std::string> Display;  // line by line
    std::string Status = "Waiting for response from Multiplexer...";
    RunTiming Timing;
    bool MovesBlocks = false;     // the status counts the blocks of a transfer
    bool Verifying = false;       // the read-back has begun
    bool VerifyCanceled = false;  // and was cancelled
    std::string Result;           // of the verification; empty when it came to none

    // Takes a line of the link; gives the lines that this adds to the display.
    std::span<const std::string> TakeMessage(const RunLine& line);

    // Takes the text that counts the blocks, for the status.
    void TakeProgress(const std::string& blockText);

    // From here on the link reads back what it programmed; gives the lines that this adds.
    std::span<const std::string> BeginVerification();

    // Ends the verification with its result; gives the lines that this adds.
    std::span<const std::string> EndVerification(const std::string& result);

private:
    void SetStatus(const std::string& text);
};

}  // namespace burnwick
