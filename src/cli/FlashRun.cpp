#include "cli/FlashRun.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "cli/Verb.h"
#include "ports/modFindCOMPorts.h"
#include "run/RunOutcome.h"

namespace burnwick::cli {

namespace {

ExitStatus StatusOf(RunOutcome outcome) {
    switch (outcome) {
        case RunOutcome::Ok:
            return Done;
        case RunOutcome::NoResponse:
            return NoResponse;
        case RunOutcome::TransmittingError:
            return TransmittingError;
        case RunOutcome::NotCompatible:
            return NotCompatible;
        case RunOutcome::Canceled:
            return Canceled;
        case RunOutcome::FileError:
            break;
    }
    return FileUnusable;
}

// The first line that holds the text; empty when none does.
std::string LineWith(const std::vector<std::string>& lines, std::string_view text) {
    const auto found = std::find_if(lines.begin(), lines.end(), [text](const std::string& line) {
        return line.find(text) != std::string::npos;
    });
    return found == lines.end() ? "" : *found;
}

// The error line of the link as a sentence of the command line's.
std::string WordFileTrouble(std::string text) {
    constexpr std::string_view mark = "Error: ";
    if (text.starts_with(mark)) {
        text.erase(0, mark.size());
    }
    if (text == "Invalid file size.") {
        text +=
            " An image has 65536, 262144, 524288 or 1048576 bytes, unless it is of a type that tells its own"
            " length; is this the right file, and is it whole?";
    }
    return text;
}

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
      Progress_(environment.Err, environment.ErrColumns, environment.Color) {
    HandleEvents();
}

int FlashRun::Download(const std::string& fileName) {
    Flash_.SetFileName(fileName);
    return Execute(Method::Download, /*portFirst=*/false);
}

int FlashRun::Upload(const std::string& fileName, int blocks, bool replacesFile) {
    Flash_.SetFileName(fileName);
    Flash_.SetUploadBlock(static_cast<std::int16_t>(blocks));
    Report_.TotalBlocks = blocks;
    return Execute(Method::Upload, /*portFirst=*/replacesFile);
}

int FlashRun::RefuseFile(const std::string& why) {
    Report_.Status = FileUnusable;
    Report_.Error = why;
    return Tell(Environment_, Options_.Json, Report_);
}

// False when there is no such port; the report then says so.
bool FlashRun::ChoosePort() {
    if (Options_.Port.empty()) {
        Port_.Number = modFindCOMPorts::ChooseStartupPort(Control_, Environment_.Setting);
        Port_.Device = DeviceOf(Port_.Number, Environment_.Setting);
    } else if (const auto choice = ParsePortChoice(Options_.Port, Environment_.Setting)) {
        Port_ = *choice;
    } else {
        Report_.Status = WrongUsage;
        Report_.Error =
            "--port " + Options_.Port + ": neither a port (COM1 to COM16) nor the path of a device";
        return false;
    }
    Report_.Port = Port_.Number;
    if (const auto error = Control_.SetCommPort(Port_.Number)) {
        Report_.Status = PortNotAvailable;
        Report_.Error = error->Description;
        return false;
    }
    Flash_.SetCommPort(static_cast<std::uint8_t>(Port_.Number));
    return true;
}

// False when the port does not open; the report then says why.
bool FlashRun::PortOpens() {
    if (const auto error = Control_.SetPortOpen(true)) {
        Report_.Status = PortNotAvailable;
        Report_.Error = WordPortTrouble(*error);
        return false;
    }
    Control_.SetPortOpen(false);
    return true;
}

int FlashRun::Execute(Method method, bool portFirst) {
    if (!ChoosePort() || (portFirst && !PortOpens())) {
        return Tell(Environment_, Options_.Json, Report_);
    }
    Flash_.SetBaudRate(Options_.Baud.empty() ? GetBaudRateSetting(Environment_.Setting) : Options_.Baud);
    {
        const auto awake = Environment_.InhibitSleep("A unit's flash memory is being programmed or read");
        const auto interrupt = Environment_.CatchInterrupts([this] { Flash_.Execute(Method::Cancel); });
        Flash_.Execute(method);
    }
    Progress_.Clear();
    Conclude(method);
    return Tell(Environment_, Options_.Json, Report_);
}

void FlashRun::HandleEvents() {
    Flash_.Message = [this](const std::string& text) { ShowMessage(text); };
    Flash_.Timing = [this](const std::string& text) { ShowTiming(text); };
    Flash_.Progress = [this](int block, int total) { ShowProgress(block, total); };
    Flash_.Trace = [this](const std::string& line) {
        Progress_.Clear();
        Environment_.Err << line << '\n';
    };
    Flash_.SetDebugEnabled(Environment_.Trace);
}

void FlashRun::ShowMessage(const std::string& text) {
    constexpr std::string_view contact = "Contact established at ";
    Report_.Messages.push_back(text);
    if (text.starts_with(contact)) {
        std::from_chars(text.data() + contact.size(), text.data() + text.size(), Report_.Baud);
    }
    if (!Options_.Quiet && !Options_.Json) {
        Progress_.Clear();
        Environment_.Out << text << std::endl;
    }
}

void FlashRun::ShowTiming(const std::string& text) {
    constexpr std::string_view waiting = "Timeout: ";
    if (!text.starts_with(waiting)) {
        TransferStart_ = TransferStart_.value_or(Environment_.Loop.MillisecondClock());
    } else if (!Options_.Quiet) {
        Progress_.ShowText("Waiting for the unit: " + text.substr(waiting.size()) + " left (Ctrl+C cancels)");
    }
}

void FlashRun::ShowProgress(int block, int totalBlock) {
    Report_.Blocks = block;
    Report_.TotalBlocks = totalBlock;
    if (!Options_.Quiet) {
        Progress_.ShowBlock(Environment_.Loop.MillisecondClock(), block, totalBlock);
    }
}

void FlashRun::Conclude(Method method) {
    if (TransferStart_) {
        const std::chrono::duration<double> elapsed = Environment_.Loop.MillisecondClock() - *TransferStart_;
        Report_.ElapsedSeconds = elapsed.count();
    }
    if (const auto& error = Flash_.PortError()) {
        Report_.Status = PortNotAvailable;
        Report_.Error = WordPortTrouble(*error);
        return;
    }
    Report_.Status = StatusOf(OutcomeOf(Report_.Messages));
    Report_.Error = WordFailure(method, LineWith(Report_.Messages, "Error:"));
}

std::string FlashRun::WordFailure(Method method, const std::string& fileTrouble) const {
    const bool halfWritten = method == Method::Download && Report_.Baud > 0;
    const std::string after =
        halfWritten ? " The unit's flash is incomplete: program it again before it is used." : "";
    switch (Report_.Status) {
        case NoResponse:
            return "no response from the unit on " + PortName()
                   + " within 60 seconds. Is it powered, in its loader, and the cable in the right socket?";
        case TransmittingError:
            return "the link to the unit on " + PortName() + " failed "
                   + (Report_.Baud > 0 ? "at block " + std::to_string(std::max(Report_.Blocks, 1)) + " of "
                                             + std::to_string(Report_.TotalBlocks)
                                       : "while it was being set up")
                   + ". Check the serial cable and try again." + after;
        case NotCompatible:
            return "the image is not made for this unit; nothing was written.";
        case Canceled:
            return "canceled." + after;
        case FileUnusable:
            return WordFileTrouble(fileTrouble);
        default:
            return {};
    }
}

std::string FlashRun::PortName() const {
    return "COM" + std::to_string(Port_.Number) + " (" + Port_.Device + ")";
}

// The description names the device.
std::string FlashRun::WordPortTrouble(const CommError& error) const {
    const char* stop = error.Description.ends_with('?') ? "" : ".";
    return "COM" + std::to_string(Port_.Number) + " is not available. " + error.Description + stop;
}

}  // namespace burnwick::cli
