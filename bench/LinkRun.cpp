#include "bench/LinkRun.h"

#include <cstdint>
#include <stdexcept>

#include "platform/loop/MessageLoop.h"
#include "platform/serial/MSComm.h"
#include "platform/serial/SerialDevice.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

// When a run's blocks began and ended.
struct Account {
    Clock::time_point Start;
    Clock::time_point End;

    void Listen(burnwick::SerialFlash& flash) {
        // Raised once before the first block, which is sent without any further wait.
        flash.Progress = [this](int block, int /*totalBlock*/) {
            if (block == 0) {
                Start = Clock::now();
            }
        };
        flash.Message = [this](const burnwick::RunLine& line) {
            if (line.Kind == burnwick::LineKind::Completed) {
                End = Clock::now();
            }
        };
    }
};

}  // namespace

LinkTime RunLink(const LinkJob& job) {
    const auto loop = burnwick::NewSystemLoop();
    burnwick::MSComm port(*loop, burnwick::NewSerialDevice(), [&job](int) { return job.Device; });
    burnwick::SerialFlash flash(*loop, port);
    Account account;
    account.Listen(flash);
    flash.SetFileName(job.File);
    flash.SetBaudRate(job.Baud);
    flash.SetUploadBlock(static_cast<std::int16_t>(job.UploadBlocks));
    flash.Execute(job.Method);
    const burnwick::RunResult& run = flash.LastRun();
    if (!run.Succeeded() || std::to_string(run.Baud) != job.Baud) {
        throw std::runtime_error("a run of the link failed, or was not made at " + job.Baud + " bit/s");
    }
    return {run.TotalBlocks, account.End - account.Start};
}

}  // namespace bench
