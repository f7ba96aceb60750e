#include "run/RunOutcome.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace burnwick {

RunOutcome OutcomeOf(std::span<const std::string> messages) {
    // The worst first: a text of failure is never outweighed by one of success.
    static constexpr std::array<std::pair<std::string_view, RunOutcome>, 6> texts{{
        {"Error:", RunOutcome::FileError},
        {" was canceled.", RunOutcome::Canceled},
        {"No response from the unit.", RunOutcome::NoResponse},
        {"Transmitting error.", RunOutcome::TransmittingError},
        {"The software is not compatible.", RunOutcome::NotCompatible},
        {" was completed successfully.", RunOutcome::Ok},
    }};
    // "Opening " and a file's name may hold any of these words.
    const auto says = [messages](std::string_view text) {
        return std::any_of(messages.begin(), messages.end(), [text](const std::string& message) {
            return !message.starts_with("Opening ") && message.find(text) != std::string::npos;
        });
    };
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&](const auto& text) { return says(text.first); });
    return found == texts.end() ? RunOutcome::TransmittingError : found->second;
}

}  // namespace burnwick
