#pragma once

#include <span>
#include <string>

#include "cli/Environment.h"
#include "cli/ProgressLine.h"
#include "cli/RunOptions.h"
#include "cli/RunReport.h"
#include "job/JobEvent.h"
#include "job/RunTexts.h"

namespace burnwick::cli {

// Shows a job while it runs, its lines on Out and its progress on Err, and keeps its texts and figures.
class RunConsole {
public:
    RunConsole(Environment& environment, const RunOptions& options);

    // Shows an event of the job, its result apart.
    void Show(const JobEvent& event);

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
    void ShowProgress(const BlockProgress& progress);
    void BeginVerification();

    Environment& Environment_;
    const RunOptions& Options_;
    ProgressLine Progress_;
    RunTexts Texts_;
    RunReport Report_;
};

}  // namespace burnwick::cli
