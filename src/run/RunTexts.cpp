#include "run/RunTexts.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace burnwick {

namespace {

bool HasPart(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

bool NamesAFile(const std::string& line) {
    return line.starts_with("Opening ") || line.starts_with("Error:");
}

bool IsOutcome(const std::string& line) {
    static constexpr std::array<std::string_view, 4> marks{"successfully", "The software", "Transmitting",
                                                           "canceled."};
    return std::any_of(marks.begin(), marks.end(), [&](auto mark) { return HasPart(line, mark); });
}

std::span<const std::string> RunTexts::TakeMessage(const std::string& text) {
    const auto had = Display.size();
    const bool gettingReady = HasPart(text, "Getting ready");
    if (NamesAFile(text)) {
        Status = text.starts_with("Error:") ? text : Status;
    } else if (Verifying && gettingReady) {
        Display.emplace_back("Verifying...Please wait.");
    } else if (HasPart(text, "Please wait")) {
        Status = "Please wait...";
    } else if (text == "Timeout." || gettingReady || IsOutcome(text)) {
        Status = text;
        VerifyCanceled = VerifyCanceled || (Verifying && HasPart(text, "canceled."));
    }
    Display.push_back(text);
    return std::span<const std::string>(Display).subspan(had);
}

std::span<const std::string> RunTexts::BeginVerification() {
    Verifying = true;
    Status = "Waiting...";
    Display.emplace_back(" ");
    Display.emplace_back("Please power off, then power on the unit. Waiting...");
    return std::span<const std::string>(Display).last(2);
}

std::span<const std::string> RunTexts::EndVerification(const std::string& result) {
    Result = result;
    Display.push_back(result);
    return std::span<const std::string>(Display).last(1);
}

}  // namespace burnwick
