#include "job/WindowTexts.h"

#include <cmath>
#include <string_view>

namespace burnwick {

namespace {

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    const auto last = text.find_last_not_of(' ');
    return first == std::string_view::npos ? "" : std::string(text.substr(first, last - first + 1));
}

}  // namespace

std::string ApplicationTitle(const std::string& title, const std::string& version) {
    if (title.find("Pre") == std::string::npos) {
        return title;
    }
    const auto build = version.rfind('.');
    return title + " " + version.substr(0, build + 1) + version.substr(version.size() - 2);
}

std::string ReadyText(int port, const std::string& baudRate) {
    return "Ready on COM" + std::to_string(port) + " (" + baudRate + "bps).";
}

std::string StatusAfterPortChoice(const std::string& status, int port, const std::string& baudRate) {
    return status.find("COM", 1) == std::string::npos ? status : ReadyText(port, baudRate);
}

int PercentOf(int block, int totalBlock) {
    return totalBlock > 0 ? static_cast<int>(std::floor(static_cast<double>(block) / totalBlock * 100)) : 0;
}

std::string BlockText(const RunKind& run, int block, int totalBlock) {
    const char* const doing = run.IsUpload ? "Reading" : run.Verifying ? "Verifying" : "Sending";
    return std::string(doing) + " block " + std::to_string(block) + " of " + std::to_string(totalBlock)
           + " blocks";
}

std::optional<std::string> CaptionAfter(const RunKind& run, const RunLine& line) {
    if (line.Kind == LineKind::Timeout) {
        return run.Title + " - Timeout";
    }
    if (line.Kind == LineKind::GettingReady) {
        const char* const doing = run.IsUpload ? " - Uploading " : " - Programming ";
        return run.Verifying ? std::nullopt : std::optional(run.Title + doing + run.FileName + "...");
    }
    return line.IsOutcome() ? std::optional(run.Title + " - " + line.Text.substr(0, line.Text.size() - 1))
                            : std::nullopt;
}

bool EndsWaiting(const RunKind& run, const RunLine& line) {
    return line.Kind == LineKind::Timeout || (!run.Verifying && line.Kind == LineKind::GettingReady);
}

BarChange BarAfter(LineKind kind) {
    switch (kind) {
        case LineKind::PleaseWait:
            return BarChange::PleaseWait;
        case LineKind::Completed:
            return BarChange::Full;
        case LineKind::Canceled:
        case LineKind::TransmittingError:
        case LineKind::NotCompatible:
            return BarChange::Faded;
        case LineKind::Text:
        case LineKind::GettingReady:
        case LineKind::Timeout:
        case LineKind::FileError:
            break;
    }
    return BarChange::None;
}

std::string AwayCaption(const RunTiming& timing, int percent) {
    if (timing.IsTransfer) {
        return "Burnwick - " + std::to_string(percent) + "%";
    }
    // "Timeout: 42 seconds"
    constexpr std::size_t labelLength = 9;
    return "Burnwick - " + (timing.Text.size() > labelLength ? Trimmed(timing.Text.substr(labelLength)) : "");
}

std::string Announcement(const RunTexts& texts) {
    if (!texts.Verifying) {
        return texts.Status;
    }
    return texts.Result.empty() ? "The verification could not be finished." : texts.Result;
}

}  // namespace burnwick
