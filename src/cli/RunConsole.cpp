#include "cli/RunConsole.h"

#include <string_view>
#include <variant>

#include "platform/process/PlainText.h"

namespace burnwick::cli {

using namespace std::chrono_literals;

RunConsole::RunConsole(Environment& environment, const RunOptions& options)
    : Environment_(environment),
      Options_(options),
      Progress_(environment.Err, environment.ErrColumns, environment.Color) {}

void RunConsole::Show(const JobEvent& event) {
    std::visit(Overloaded{
                   [this](const RunLine& line) { Print(Texts_.TakeMessage(line)); },
                   [this](const RunTiming& timing) { ShowTiming(timing); },
                   [this](const BlockProgress& progress) { ShowProgress(progress); },
                   [this](const TraceLine& line) {
                       Progress_.Clear();
                       Environment_.Err << line.Text << '\n';
                   },
                   [this](const VerificationBegins&) { BeginVerification(); },
                   [this](const VerificationEnds& end) { Print(Texts_.EndVerification(end.Result)); },
                   [](const auto&) {},
               },
               event);
}

void RunConsole::BeginVerification() {
    Print(Texts_.BeginVerification());
    BeginTransfer();
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

void RunConsole::ShowProgress(const BlockProgress& progress) {
    Report_.Blocks = progress.Block;
    Report_.TotalBlocks = progress.TotalBlock;
    if (!Options_.Quiet) {
        Progress_.ShowBlock(Environment_.Loop.MillisecondClock(), progress.Block, progress.TotalBlock);
    }
}

}  // namespace burnwick::cli
