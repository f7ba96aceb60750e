#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "cli/Environment.h"
#include "cli/ProgressLine.h"
#include "cli/RunOptions.h"
#include "cli/RunReport.h"
#include "engine/SerialFlash.h"
#include "run/RunTexts.h"

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
    // It has ended; gives the lines that it said.
    std::span<const std::string> EndTransfer();

    void Print(std::span<const std::string> lines);

    RunTexts& Texts() { return Texts_; }
    // Port, status and error are the run's to fill in.
    RunReport& Report() { return Report_; }

private:
    void ShowMessage(const std::string& text);
    void ShowTiming(const std::string& text);
    void ShowProgress(int block, int totalBlock);

    Environment& Environment_;
    const RunOptions& Options_;
    ProgressLine Progress_;
    RunTexts Texts_;
    RunReport Report_;
    std::size_t FirstLine_ = 0;  // of the transfer
    std::optional<std::chrono::milliseconds> TransferStart_;
};

}  // namespace burnwick::cli
