#include "cli/FlashRun.h"

#include <chrono>
#include <optional>
#include <utility>
#include <variant>

#include "cli/Wording.h"
#include "job/Summary.h"
#include "log/ActivityLog.h"
#include "platform/files/Utf8Path.h"
#include "ports/modFindCOMPorts.h"

namespace burnwick::cli {

namespace {

constexpr const char* Programmed = "Programming was completed successfully.";

}  // namespace

FlashRun::FlashRun(Environment& environment, const RunOptions& options)
    : Environment_(environment), Options_(options), Console_(environment, options) {}

int FlashRun::Download(const std::string& image, bool verify) {
    FlashOrder order{.What = FlashOrder::Kind::Download};
    order.Verify = verify ? FlashOrder::Verification::Always : FlashOrder::Verification::None;
    if (!AcceptImage(order, image) || (verify && !PlanVerification(order)) || !ChoosePort(order)) {
        return End();
    }
    const JobResult job = RunJob(order);
    if (job.VerificationBegun) {
        Console_.Texts().Status = Programmed;
    }
    Log(order, job);
    return End();
}

int FlashRun::Upload(const std::string& file, int blocks) {
    FlashOrder order{
        .What = FlashOrder::Kind::Upload, .FileName = file, .Blocks = static_cast<std::int16_t>(blocks)};
    if (!ChoosePort(order)) {
        return End();
    }
    const JobResult job = RunJob(order);
    Report().TotalBlocks = blocks;
    order.Image = {.FileName = file, .Information = modBinFileInfo::GetBinFileInfo(file)};
    Log(order, job);
    return End();
}

int FlashRun::Verify(const std::string& image) {
    FlashOrder order{.What = FlashOrder::Kind::Verify};
    if (!AcceptImage(order, image) || !PlanVerification(order) || !ChoosePort(order)) {
        return End();
    }
    const JobResult job = RunJob(order);
    RunTexts& texts = Console_.Texts();
    if (job.ReadBackIsGone) {
        texts.Status = "Verifying error: what was read back is gone.";
    } else if (!texts.Result.empty()) {
        texts.Status = texts.Result;
    }
    Log(order, job);
    return End();
}

int FlashRun::RefuseFile(const std::string& why) {
    Fail(FileUnusable, why);
    return End();
}

// False when the file is no image; the report then says why.
bool FlashRun::AcceptImage(FlashOrder& order, const std::string& fileName) {
    auto read = modBinFileInfo::ReadImageFile(fileName);
    if (const auto* const refusal = std::get_if<modBinFileInfo::ImageRefusal>(&read)) {
        Fail(FileUnusable, WordImageRefusal(fileName, *refusal));
        return false;
    }
    order.Image = std::get<Image>(std::move(read));
    return true;
}

// False when the unit's flash could not be read back and compared: that is said before the unit is touched.
bool FlashRun::PlanVerification(FlashOrder& order) {
    auto plan = PlanReadBack(Environment_.ProgramFolder, order.Image);
    if (const auto* const trouble = std::get_if<ReadBackTrouble>(&plan)) {
        Fail(FileUnusable, *trouble == ReadBackTrouble::ImageLength
                               ? order.Image.FileName + " cannot be verified: " + WordInvalidSize()
                               : "no verification file can be made in " + Utf8Text(Environment_.ProgramFolder)
                                     + "; may that folder be written?");
        return false;
    }
    order.ReadBack = std::get<ReadBackPlan>(std::move(plan));
    return true;
}

// False when there is no such port; the report then says so.
bool FlashRun::ChoosePort(FlashOrder& order) {
    SettingStore& settings = Environment_.Settings;
    const OwnDevices devices = PortDevices(settings);
    MSComm control(Environment_.Loop, Environment_.NewDevice(),
                   [&](int port) { return DeviceOf(port, devices); });
    if (Options_.Port.empty()) {
        Port_.Number = modFindCOMPorts::ChooseStartupPort(
            control, settings.Stored(Setting::ComPort),
            [&](int port) { settings.Store(Setting::ComPort, std::to_string(port)); });
        Port_.Device = DeviceOf(Port_.Number, devices);
    } else if (const auto choice = ParsePortChoice(Options_.Port, devices)) {
        Port_ = *choice;
    } else {
        Fail(WrongUsage,
             "--port " + Options_.Port + ": neither a port (COM1 to COM16) nor the path of a device");
        return false;
    }
    Report().Port = Port_.Number;
    if (const auto error = control.SetCommPort(Port_.Number)) {
        Fail(PortNotAvailable, error->Description);
        return false;
    }
    order.Port = Port_.Number;
    order.Device = Port_.Device;
    order.BaudRate =
        Options_.Baud.empty() ? GetBaudRateSetting(settings.Value(Setting::BaudRate)) : Options_.Baud;
    order.Trace = Environment_.Trace;
    return true;
}

JobResult FlashRun::RunJob(const FlashOrder& order) {
    constexpr auto untilAnEvent = std::chrono::hours(1);
    std::optional<JobResult> result;
    Console_.BeginTransfer();
    const auto job = Environment_.NewJob(order, [&](const JobEvent& event) {
        if (const auto* const end = std::get_if<JobResult>(&event)) {
            result = *end;
        } else {
            Console_.Show(event);
        }
    });
    Environment_.CatchInterrupts([&job] { job->Cancel(); });
    const auto awake = Environment_.InhibitSleep("A unit's flash memory is being programmed or read");
    job->Start();
    while (!result) {
        Environment_.Loop.Yield(untilAnEvent);
    }
    Console_.EndTransfer(result->LastRun());
    TakeResult(order, *result);
    return *result;
}

void FlashRun::TakeResult(const FlashOrder& order, const JobResult& job) {
    const RunResult& run = job.LastRun();
    if (run.PortError) {
        FailPort(*run.PortError);
    } else {
        Report().Status = StatusOf(run.Outcome);
        Report().Error = WordFailure(Report(), PortName(), run);
    }
    if (order.What == FlashOrder::Kind::Download && job.Transfer.LeavesFlashIncomplete()) {
        Report().Error += " The unit's flash is incomplete: program it again before it is used.";
    }
    if (job.ReadBack) {
        TakeVerdict(order, job);
    }
    if (!job.Unforeseen.empty()) {
        Fail(TransmittingError, job.Unforeseen);
    }
}

void FlashRun::TakeVerdict(const FlashOrder& order, const JobResult& job) {
    const std::string notVerified = order.What == FlashOrder::Kind::Download
                                        ? " The programming was completed, but it is not verified."
                                        : "";
    Report().Verdict = job.Verdict;
    if (!job.ReadBack->Succeeded()) {
        Report().Error += notVerified;
    } else if (!job.Verdict) {
        Fail(FileUnusable, "what was read back is gone: somebody deleted "
                               + Utf8Text(order.ReadBack->File->Path()) + "." + notVerified);
    } else if (!job.Verdict->IsMatch()) {
        const std::string changed = job.ImageChanged ? " " + ImageChangedText(order.Image) : "";
        Fail(job.Verdict->WasRead ? Differences : FileUnusable,
             WordMismatch(order.Image, *job.Verdict) + changed);
    }
}

void FlashRun::Log(const FlashOrder& order, const JobResult& job) {
    const bool isVerification = order.What == FlashOrder::Kind::Verify;
    ActivityRecord record =
        RecordOf(isVerification ? job.LastRun() : job.Transfer, Console_.Texts(), order.Image.FileName,
                 SummaryOf(order.Image.Information, /*wholeChecksum=*/false));
    record.IsUpload = order.What != FlashOrder::Kind::Download;
    if (isVerification) {
        record.Succeeded = job.Verdict && job.Verdict->IsMatch();
    }
    WriteActivityLog(Environment_.ProgramFolder, LogOption(Environment_.Settings), record,
                     Environment_.Loop.Now());
}

void FlashRun::Fail(ExitStatus status, const std::string& error) {
    Report().Status = status;
    Report().Error = error;
}

// The description names the device.
void FlashRun::FailPort(const CommError& error) {
    const char* stop = error.Description.ends_with('?') ? "" : ".";
    Fail(PortNotAvailable,
         "COM" + std::to_string(Port_.Number) + " is not available. " + error.Description + stop);
}

int FlashRun::End() {
    Report().Messages = Console_.Texts().Display;
    return Tell(Environment_, Options_.Json, Report());
}

std::string FlashRun::PortName() const {
    return "COM" + std::to_string(Port_.Number) + " (" + Port_.Device + ")";
}

}  // namespace burnwick::cli
