#include "cli/RunConsole.h"

#include <charconv>
#include <string_view>

#include "platform/PlainText.h"

namespace burnwick::cli {

RunConsole::RunConsole(Environment& environment, const RunOptions& options)
    : Environment_(environment),
      Options_(options),
      Progress_(environment.Err, environment.ErrColumns, environment.Color) {}

void RunConsole::Listen(SerialFlash& flash) {
    flash.Message = [this](const std::string& text) { ShowMessage(text); };
    flash.Timing = [this](const std::string& text) { ShowTiming(text); };
    flash.Progress = [this](int block, int total) { ShowProgress(block, total); };
    flash.Trace = [this](const std::string& line) {
        Progress_.Clear();
        Environment_.Err << line << '\n';
    };
    flash.SetDebugEnabled(Environment_.Trace);
}

void RunConsole::BeginTransfer() {
    Progress_.Restart();
    TransferStart_.reset();
    FirstLine_ = Texts_.Display.size();
    Report_.Baud = 0;
    Report_.Blocks = 0;
    Report_.TotalBlocks = 0;
    Report_.ElapsedSeconds = 0;
}

std::span<const std::string> RunConsole::EndTransfer() {
    Progress_.Clear();
    if (TransferStart_) {
        const std::chrono::duration<double> elapsed = Environment_.Loop.MillisecondClock() - *TransferStart_;
        Report_.ElapsedSeconds = elapsed.count();
    }
    return std::span<const std::string>(Texts_.Display).subspan(FirstLine_);
}

void RunConsole::Print(std::span<const std::string> lines) {
    if (Options_.Quiet || Options_.Json) {
        return;
    }
    Progress_.Clear();
    for (const auto& line : lines) {
        Environment_.Out << PlainText(line, '.') << '\n';
    }
    Environment_.Out << std::flush;
}

void RunConsole::ShowMessage(const std::string& text) {
    constexpr std::string_view contact = "Contact established at ";
    if (text.starts_with(contact)) {
        std::from_chars(text.data() + contact.size(), text.data() + text.size(), Report_.Baud);
    }
    Print(Texts_.TakeMessage(text));
}

void RunConsole::ShowTiming(const std::string& text) {
    constexpr std::string_view waiting = "Timeout: ";
    Texts_.Timing = text;
    if (!text.starts_with(waiting)) {
        TransferStart_ = TransferStart_.value_or(Environment_.Loop.MillisecondClock());
    } else if (!Options_.Quiet) {
        Progress_.ShowText("Waiting for the unit: " + text.substr(waiting.size()) + " left (Ctrl+C cancels)");
    }
}

void RunConsole::ShowProgress(int block, int totalBlock) {
    Report_.Blocks = block;
    Report_.TotalBlocks = totalBlock;
    if (!Options_.Quiet) {
        Progress_.ShowBlock(Environment_.Loop.MillisecondClock(), block, totalBlock);
    }
}

}  // namespace burnwick::cli
