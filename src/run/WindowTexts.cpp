#include "run/WindowTexts.h"

#include <cmath>
#include <string_view>

namespace burnwick {

namespace {

bool Contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    const auto last = text.find_last_not_of(' ');
    return first == std::string_view::npos ? "" : std::string(text.substr(first, last - first + 1));
}

}  // namespace

std::string ApplicationTitle(const std::string& title, const std::string& version) {
    if (!Contains(title, "Pre")) {
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

std::optional<std::string> CaptionAfter(const RunKind& run, const std::string& message) {
    if (message == "Timeout.") {
        return run.Title + " - Timeout";
    }
    if (NamesAFile(message)) {
        return std::nullopt;
    }
    if (Contains(message, "Getting ready")) {
        const char* const doing = run.IsUpload ? " - Uploading " : " - Programming ";
        return run.Verifying ? std::nullopt : std::optional(run.Title + doing + run.FileName + "...");
    }
    return IsOutcome(message) ? std::optional(run.Title + " - " + message.substr(0, message.size() - 1))
                              : std::nullopt;
}

bool EndsWaiting(const RunKind& run, const std::string& message) {
    return message == "Timeout."
           || (!run.Verifying && !NamesAFile(message) && Contains(message, "Getting ready"));
}

BarChange BarAfter(const std::string& message) {
    if (NamesAFile(message)) {
        return BarChange::None;
    }
    if (Contains(message, "Please wait")) {
        return BarChange::PleaseWait;
    }
    if (Contains(message, "successfully")) {
        return BarChange::Full;
    }
    return IsOutcome(message) ? BarChange::Faded : BarChange::None;
}

bool MovesBlocks(const std::string& status) {
    return Contains(status, "block");
}

std::string AwayCaption(const std::string& timing, int percent) {
    // "Timeout: 42 seconds"
    constexpr std::size_t labelLength = 9;
    if (Contains(timing, "Elapsed")) {
        return "Burnwick - " + std::to_string(percent) + "%";
    }
    return "Burnwick - " + (timing.size() > labelLength ? Trimmed(timing.substr(labelLength)) : "");
}

std::string Announcement(const RunTexts& texts) {
    if (!texts.Verifying) {
        return texts.Status;
    }
    return texts.Result.empty() ? "The verification could not be finished." : texts.Result;
}

bool OffersVerification(const std::string& status, const std::string& verifySetting, bool cancelRequested) {
    return Contains(status, "Programming was completed successfully.") && verifySetting == "1"
           && !cancelRequested;
}

}  // namespace burnwick
