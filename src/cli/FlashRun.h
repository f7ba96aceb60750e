#pragma once

#include <string>

#include "cli/Environment.h"
#include "cli/RunConsole.h"
#include "cli/RunOptions.h"
#include "job/FlashJob.h"
#include "platform/serial/MSComm.h"
#include "ports/PortTable.h"

namespace burnwick::cli {

// A flashing job on the command line: chooses the port, lets Ctrl+C cancel the job, keeps its record in the
// log, and words its result. Each verb's function gives the exit status.
class FlashRun {
public:
    FlashRun(Environment& environment, const RunOptions& options);

    // Programs the image; `verify`: then reads it back and compares.
    int Download(const std::string& image, bool verify);

    int Upload(const std::string& file, int blocks);

    // Reads the unit's flash and compares it with the image.
    int Verify(const std::string& image);

    // Ends a run that cannot begin because of its file.
    int RefuseFile(const std::string& why);

private:
    RunReport& Report() { return Console_.Report(); }
    bool AcceptImage(FlashOrder& order, const std::string& fileName);
    bool PlanVerification(FlashOrder& order);
    bool ChoosePort(FlashOrder& order);
    JobResult RunJob(const FlashOrder& order);
    void TakeResult(const FlashOrder& order, const JobResult& job);
    void TakeVerdict(const FlashOrder& order, const JobResult& job);
    void Log(const FlashOrder& order, const JobResult& job);
    void Fail(ExitStatus status, const std::string& error);
    void FailPort(const CommError& error);
    int End();
    std::string PortName() const;

    Environment& Environment_;
    const RunOptions& Options_;
    PortChoice Port_;
    RunConsole Console_;
};

}  // namespace burnwick::cli
