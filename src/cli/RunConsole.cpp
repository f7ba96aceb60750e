#include "cli/RunConsole.h"

#include <string_view>

#include "platform/PlainText.h"

namespace burnwick::cli {

using namespace std::chrono_literals;

RunConsole::RunConsole(Environment& environment, const RunOptions& options)
    : Environment_(environment),
      Options_(options),
      Progress_(environment.Err, environment.ErrColumns, environment.Color) {}

void RunConsole::Listen(SerialFlash& flash) {
    flash.Message = [this](const RunLine& line) { Print(Texts_.TakeMessage(line)); };
    flash.Timing = [this](const RunTiming& timing) { ShowTiming(timing); };
    flash.Progress = [this](int block, int total) { ShowProgress(block, total); };
    flash.Trace = [this](const std::string& line) {
        Progress_.Clear();
        Environment_.Err << line << '\n';
    };
    flash.SetDebugEnabled(Environment_.Trace);
}

void RunConsole::BeginTransfer() {
    Progress_.Restart();
    Report_.Baud = 0;
    Report_.Blocks = 0;
    Report_.TotalBlocks = 0;
    Report_.ElapsedSeconds = 0;
}

void RunConsole::EndTransfer(const RunResult& run) {
    Progress_.Clear();
    Report_.Baud = run.Baud;
    Report_.ElapsedSeconds = std::chrono::duration<double>(run.Elapsed.value_or(0ms)).count();
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

void RunConsole::ShowTiming(const RunTiming& timing) {
    constexpr std::string_view label = "Timeout: ";
    Texts_.Timing = timing;
    if (!timing.IsTransfer && !Options_.Quiet) {
        Progress_.ShowText("Waiting for the unit: " + timing.Text.substr(label.size())
                           + " left (Ctrl+C cancels)");
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
