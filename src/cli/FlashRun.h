#pragma once

#include <memory>
#include <span>
#include <string>

#include "cli/Environment.h"
#include "cli/RunConsole.h"
#include "cli/RunOptions.h"
#include "engine/SerialFlash.h"
#include "image/modBinFileInfo.h"
#include "log/ActivityLog.h"
#include "platform/MSComm.h"
#include "ports/PortTable.h"
#include "job/Verification.h"

namespace burnwick::cli {

// One run of the link on the command line: chooses the port, lets Ctrl+C cancel it, verifies when that is
// wanted, leaves a record in the log, and words what came of it. Each run gives the exit status.
class FlashRun {
public:
    FlashRun(Environment& environment, const RunOptions& options);

    // Programs the image; `verify`: then reads it back and compares.
    int Download(const std::string& image, bool verify);

    // `replacesFile`: the file is there, and must not be lost to a port that is not.
    int Upload(const std::string& file, int blocks, bool replacesFile);

    // Reads the unit's flash and compares it with the image.
    int Verify(const std::string& image);

    // Ends a run that cannot begin because of its file.
    int RefuseFile(const std::string& why);

private:
    RunReport& Report() { return Console_.Report(); }
    bool AcceptImage(const std::string& image);
    bool PrepareReadBack(const std::string& image);
    bool ChoosePort();
    bool PortOpens();
    // Ctrl+C cancels from now on, and the computer stays awake while the result lives.
    std::unique_ptr<SleepInhibitor> Prepare();
    void Transfer(Method method, const std::string& file);
    void ReadBack(const std::string& image, const std::string& ifItFails);
    void Judge(const std::string& image, const std::string& ifItFails);
    ActivityRecord RecordOfRun(const RunResult& run, const std::string& file);
    void Log(const ActivityRecord& record);
    void Fail(ExitStatus status, const std::string& error);
    void FailPort(const CommError& error);
    int End();
    std::string PortName() const;

    Environment& Environment_;
    const RunOptions& Options_;
    PortChoice Port_;
    MSComm Control_;
    SerialFlash Flash_;
    RunConsole Console_;
    modBinFileInfo::BinFileInfo Image_;  // as it was before the run, or what an upload has read
    std::unique_ptr<VerificationFile> ReadBackFile_;
};

}  // namespace burnwick::cli
