#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "engine/SerialFlash.h"
#include "image/Image.h"
#include "job/JobEvent.h"
#include "job/Verification.h"
#include "platform/loop/MessageLoop.h"
#include "platform/serial/MSComm.h"

namespace burnwick {

// What a front end asks for.
struct FlashOrder {
    enum class Kind { Download, Upload, Verify };
    enum class Verification { None, Ask, Always };

    Kind What = Kind::Download;
    std::string FileName{};                    // the file to create (UTF-8), of an upload
    burnwick::Image Image{};                   // of any other job
    std::int16_t Blocks = 0;                   // of an upload
    int Port = 1;                              // COM number
    std::string Device{};                      // its path
    std::string BaudRate{};                    // "9600", "57600" or "115200"
    Verification Verify = Verification::None;  // of a download
    std::optional<ReadBackPlan> ReadBack{};    // without one, it is made when it is needed
    std::filesystem::path ProgramFolder{};     // of the verification file
    bool Trace = false;
};

// The whole procedure of a download, an upload or a verification, from the opening of the port to the
// verdict.
//
// Synchronous, on the thread of its loop: Run returns when the job has ended. Cancel and Answer come out of
// the loop's Yield or of an event's handler.
class FlashJob {
public:
    // The loop must outlive the job.
    FlashJob(MessageLoop& loop, std::unique_ptr<SerialDevice> device, FlashOrder order,
             std::function<void(const JobEvent&)> raise);

    // Raises a JobResult last.
    void Run();

    // Ends the run of the link in order; a verification is not offered any more.
    void Cancel();

    // Answers a VerificationOffer.
    void Answer(bool yes) { Answer_ = yes; }

private:
    void RunOrder();
    void Download();
    void Upload();
    bool WantsVerification();
    void ReadBack();
    void Judge(const std::filesystem::path& readBack);
    const RunResult& Transfer(Method method, const std::string& file, std::int16_t blocks);

    MessageLoop& Loop_;
    FlashOrder Order_;
    std::function<void(const JobEvent&)> Raise_;
    MSComm Port_;
    SerialFlash Flash_;
    JobResult Result_;
    bool Canceled_ = false;
    std::optional<bool> Answer_;
};

}  // namespace burnwick
