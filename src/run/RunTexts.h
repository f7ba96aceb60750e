#pragma once

#include <span>
#include <string>
#include <vector>

namespace burnwick {

// True for a line with a file's name in it, which may hold any words: it tells no outcome.
bool NamesAFile(const std::string& line);

// True for a line that tells how a run ended, its time-out apart.
bool IsOutcome(const std::string& line);

// What display and labels say in the course of a run. They are its state too: the log's record and the
// questions asked at its end are read from them.
struct RunTexts {
    std::vector<std::string> Display;  // line by line
    std::string Status = "Waiting for response from Multiplexer...";
    std::string Timing;
    bool Verifying = false;       // the read-back has begun
    bool VerifyCanceled = false;  // and was given up
    std::string Result;           // what it came to; empty when it came to nothing

    // Takes what the link says; gives the lines that this adds to the display.
    std::span<const std::string> TakeMessage(const std::string& text);

    // From here on the link reads back what it programmed; gives the lines that this adds.
    std::span<const std::string> BeginVerification();

    // Ends the verification with its result; gives the lines that this adds.
    std::span<const std::string> EndVerification(const std::string& result);
};

}  // namespace burnwick
