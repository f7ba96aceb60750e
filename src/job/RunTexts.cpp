#include "job/RunTexts.h"

namespace burnwick {

void RunTexts::SetStatus(const std::string& text) {
    Status = text;
    MovesBlocks = false;
}

std::span<const std::string> RunTexts::TakeMessage(const RunLine& line) {
    const auto had = Display.size();
    const bool gettingReady = line.Kind == LineKind::GettingReady;
    if (Verifying && gettingReady) {
        Display.emplace_back("Verifying...Please wait.");
    } else if (line.Kind == LineKind::PleaseWait) {
        SetStatus("Please wait...");
    } else if (line.Kind != LineKind::Text) {
        SetStatus(line.Text);
        VerifyCanceled = VerifyCanceled || (Verifying && line.Kind == LineKind::Canceled);
    }
    Display.push_back(line.Text);
    return std::span<const std::string>(Display).subspan(had);
}

void RunTexts::TakeProgress(const std::string& blockText) {
    Status = blockText;
    MovesBlocks = true;
}

std::span<const std::string> RunTexts::BeginVerification() {
    Verifying = true;
    SetStatus("Waiting...");
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
