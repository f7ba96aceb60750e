#include "cli/FlashRun.h"

#include <system_error>

#include "cli/Wording.h"
#include "log/ActivityLog.h"
#include "platform/Utf8Path.h"
#include "ports/modFindCOMPorts.h"
#include "job/LogOption.h"
#include "job/Summary.h"

namespace burnwick::cli {

namespace {

constexpr const char* Programmed = "Programming was completed successfully.";

}  // namespace

FlashRun::FlashRun(Environment& environment, const RunOptions& options)
    : Environment_(environment),
      Options_(options),
      Control_(environment.Loop, environment.NewDevice(),
               [this](int port) {
                   return port == Port_.Number && !Port_.Device.empty()
                              ? Port_.Device
                              : DeviceOf(port, Environment_.Setting);
               }),
      Flash_(environment.Loop, Control_),
      Console_(environment, options) {
    Console_.Listen(Flash_);
}

int FlashRun::Download(const std::string& image, bool verify) {
    if (!AcceptImage(image) || (verify && !PrepareReadBack(image)) || !ChoosePort()) {
        return End();
    }
    const auto awake = Prepare();
    Transfer(Method::Download, image);
    const RunResult programming = Flash_.LastRun();
    if (programming.LeavesFlashIncomplete()) {
        Report().Error += " The unit's flash is incomplete: program it again before it is used.";
    } else if (Report().Status == Done && verify) {
        ReadBack(image, " The programming was completed, but it is not verified.");
        Console_.Texts().Status = Programmed;
    }
    Log(RecordOfRun(programming, image));
    return End();
}

int FlashRun::Upload(const std::string& file, int blocks, bool replacesFile) {
    if (!ChoosePort() || (replacesFile && !PortOpens())) {
        return End();
    }
    const auto awake = Prepare();
    Flash_.SetUploadBlock(static_cast<std::int16_t>(blocks));
    Transfer(Method::Upload, file);
    Report().TotalBlocks = blocks;
    Image_ = modBinFileInfo::GetBinFileInfo(file);
    ActivityRecord record = RecordOfRun(Flash_.LastRun(), file);
    record.IsUpload = true;
    Log(record);
    return End();
}

int FlashRun::Verify(const std::string& image) {
    if (!AcceptImage(image) || !PrepareReadBack(image) || !ChoosePort()) {
        return End();
    }
    const auto awake = Prepare();
    ReadBack(image, "");
    RunTexts& texts = Console_.Texts();
    texts.Status = texts.Result.empty() ? texts.Status : texts.Result;
    ActivityRecord record = RecordOfRun(Flash_.LastRun(), image);
    record.IsUpload = true;
    record.Succeeded = Report().Verdict && Report().Verdict->IsMatch();
    Log(record);
    return End();
}

int FlashRun::RefuseFile(const std::string& why) {
    Fail(FileUnusable, why);
    return End();
}

// False when the file is no image; the report then says why.
bool FlashRun::AcceptImage(const std::string& image) {
    if (const std::string refusal = WordImageRefusal(image); !refusal.empty()) {
        Fail(FileUnusable, refusal);
        return false;
    }
    Image_ = modBinFileInfo::GetBinFileInfo(image);
    return true;
}

// False when the unit's flash could not be read back and compared: better told before the unit is touched
// than afterwards.
bool FlashRun::PrepareReadBack(const std::string& image) {
    const auto blocks = BlocksToReadBack(image);
    if (!blocks) {
        Fail(FileUnusable, image + " cannot be verified: " + WordInvalidSize());
        return false;
    }
    Flash_.SetUploadBlock(*blocks);
    ReadBackFile_ = VerificationFile::Claim(Environment_.ProgramFolder, Utf8Path(image));
    if (!ReadBackFile_) {
        Fail(FileUnusable, "no verification file can be made in " + Utf8Text(Environment_.ProgramFolder)
                               + "; may that folder be written?");
        return false;
    }
    return true;
}

// False when there is no such port; the report then says so.
bool FlashRun::ChoosePort() {
    if (Options_.Port.empty()) {
        Port_.Number = modFindCOMPorts::ChooseStartupPort(Control_, Environment_.Setting, Environment_.Store);
        Port_.Device = DeviceOf(Port_.Number, Environment_.Setting);
    } else if (const auto choice = ParsePortChoice(Options_.Port, Environment_.Setting)) {
        Port_ = *choice;
    } else {
        Fail(WrongUsage,
             "--port " + Options_.Port + ": neither a port (COM1 to COM16) nor the path of a device");
        return false;
    }
    Report().Port = Port_.Number;
    if (const auto error = Control_.SetCommPort(Port_.Number)) {
        Fail(PortNotAvailable, error->Description);
        return false;
    }
    Flash_.SetCommPort(static_cast<std::uint8_t>(Port_.Number));
    Flash_.SetBaudRate(Options_.Baud.empty() ? GetBaudRateSetting(Environment_.Setting) : Options_.Baud);
    return true;
}

// False when the port does not open; the report then says why.
bool FlashRun::PortOpens() {
    if (const auto error = Control_.SetPortOpen(true)) {
        FailPort(*error);
        return false;
    }
    Control_.SetPortOpen(false);
    return true;
}

std::unique_ptr<SleepInhibitor> FlashRun::Prepare() {
    Environment_.CatchInterrupts([this] { Flash_.Execute(Method::Cancel); });
    return Environment_.InhibitSleep("A unit's flash memory is being programmed or read");
}

void FlashRun::Transfer(Method method, const std::string& file) {
    Console_.BeginTransfer();
    Flash_.SetFileName(file);
    Flash_.Execute(method);
    const RunResult& run = Flash_.LastRun();
    Console_.EndTransfer(run);
    if (run.PortError) {
        FailPort(*run.PortError);
        return;
    }
    Report().Status = StatusOf(run.Outcome);
    Report().Error = WordFailure(Report(), PortName(), run);
}

// The unit's flash goes into the verification file, which lives no longer than this.
void FlashRun::ReadBack(const std::string& image, const std::string& ifItFails) {
    Console_.Print(Console_.Texts().BeginVerification());
    Transfer(Method::Upload, Utf8Text(ReadBackFile_->Path()));
    if (Report().Status == Done) {
        Judge(image, ifItFails);
    } else {
        Report().Error += ifItFails;
    }
    if (Console_.Texts().VerifyCanceled) {
        Console_.Print(Console_.Texts().EndVerification("Verifying was canceled."));
    }
    ReadBackFile_.reset();
}

void FlashRun::Judge(const std::string& image, const std::string& ifItFails) {
    std::error_code ignored;
    if (!std::filesystem::exists(ReadBackFile_->Path(), ignored)) {
        Fail(FileUnusable, "what was read back is gone: somebody deleted " + Utf8Text(ReadBackFile_->Path())
                               + "." + ifItFails);
        Console_.Texts().Status = "Verifying error: what was read back is gone.";
        return;
    }
    const Verdict verdict = JudgeReadBack(image, ReadBackFile_->Path());
    Console_.Print(Console_.Texts().EndVerification(verdict.Result));
    Report().Verdict = verdict;
    if (verdict.IsMatch()) {
        return;
    }
    if (modBinFileInfo::GetBinFileInfo(image).Checksum != Image_.Checksum) {
        Fail(FileUnusable, image + " is not what it was when the run began." + ifItFails);
    } else {
        Fail(verdict.WasRead ? Differences : FileUnusable, WordMismatch(image, verdict));
    }
}

ActivityRecord FlashRun::RecordOfRun(const RunResult& run, const std::string& file) {
    return RecordOf(run, Console_.Texts(), file, SummaryOf(Image_, /*wholeChecksum=*/false));
}

void FlashRun::Log(const ActivityRecord& record) {
    WriteActivityLog(Environment_.ProgramFolder, LogOption(Environment_.Setting, Environment_.Store), record,
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
