#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "cli/Environment.h"
#include "cli/ProgressLine.h"
#include "cli/RunOptions.h"
#include "cli/RunReport.h"
#include "engine/SerialFlash.h"
#include "ports/PortTable.h"

namespace burnwick::cli {

// One run of the link on the command line: chooses the port, tells what happens while it happens, lets Ctrl+C
// cancel it, and words what came of it.
class FlashRun {
public:
    FlashRun(Environment& environment, const RunOptions& options);

    int Download(const std::string& fileName);

    // `replacesFile`: the file is there, and must not be lost to a port that is not.
    int Upload(const std::string& fileName, int blocks, bool replacesFile);

    // Ends a run that cannot begin because of its file.
    int RefuseFile(const std::string& why);

private:
    bool ChoosePort();
    bool PortOpens();
    // `portFirst`: the port must open before the link may touch the file.
    int Execute(Method method, bool portFirst);
    void HandleEvents();
    void ShowMessage(const std::string& text);
    void ShowTiming(const std::string& text);
    void ShowProgress(int block, int totalBlock);
    void Conclude(Method method);
    std::string WordFailure(Method method, const std::string& fileTrouble) const;
    std::string PortName() const;
    std::string WordPortTrouble(const CommError& error) const;

    Environment& Environment_;
    const RunOptions& Options_;
    PortChoice Port_;
    MSComm Control_;
    SerialFlash Flash_;
    ProgressLine Progress_;
    RunReport Report_;
    std::optional<std::chrono::milliseconds> TransferStart_;
};

}  // namespace burnwick::cli
