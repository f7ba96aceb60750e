#include "bench/LinkRun.h"

#include <cstdint>
#include <stdexcept>

#include "platform/MSComm.h"
#include "platform/System.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

// What a run tells, and when.
struct Account {
    Clock::time_point Start;
    Clock::time_point End;
    int Blocks = 0;
    bool Completed = false;
    std::string Texts;

    void Listen(burnwick::SerialFlash& flash) {
        // Told once before the first block, which is sent without any further wait.
        flash.Progress = [this](int block, int totalBlock) {
            if (block == 0) {
                Start = Clock::now();
            }
            Blocks = totalBlock;
        };
        flash.Message = [this](const std::string& text) {
            if (text.find("completed successfully") != std::string::npos) {
                End = Clock::now();
                Completed = true;
            }
            Texts += text + '\n';
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
    const bool atSpeed =
        account.Texts.find("Contact established at " + job.Baud + "bps.") != std::string::npos;
    if (!account.Completed || !atSpeed) {
        throw std::runtime_error("a run of the link failed:\n" + account.Texts);
    }
    return {account.Blocks, account.End - account.Start};
}

}  // namespace bench
