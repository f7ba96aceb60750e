#pragma once

#include <span>
#include <string>

#include "cli/Environment.h"
#include "cli/ProgressLine.h"
#include "cli/RunOptions.h"
#include "cli/RunReport.h"
#include "engine/SerialFlash.h"
#include "job/RunTexts.h"

namespace burnwick::cli {

// Tells what a run does while it does it: its lines on Out, its progress on Err. Keeps texts and figures of
// it.
class RunConsole {
public:
    RunConsole(Environment& environment, const RunOptions& options);

    // Hears the link's events from now on.
    void Listen(SerialFlash& flash);

    // A transfer begins: figures and progress are its own.
    void BeginTransfer();
    // It has ended in this way.
    void EndTransfer(const RunResult& run);

    void Print(std::span<const std::string> lines);

    RunTexts& Texts() { return Texts_; }
    // Port, status and error are the run's to fill in.
    RunReport& Report() { return Report_; }

private:
    void ShowTiming(const RunTiming& timing);
    void ShowProgress(int block, int totalBlock);

    Environment& Environment_;
    const RunOptions& Options_;
    ProgressLine Progress_;
    RunTexts Texts_;
    RunReport Report_;
};

}  // namespace burnwick::cli
