#pragma once

#include <optional>
#include <string>

namespace burnwick {

// What a run is, as far as its window's texts tell it.
struct RunKind {
    std::string Title;     // the application's, with which captions begin
    std::string FileName;  // the image file's, without its folder
    bool IsUpload = false;
    bool Verifying = false;  // its read-back
};

// How many percent of the blocks have gone, fractions cut off; 0 without blocks.
int PercentOf(int block, int totalBlock);

// "Sending block 3 of 256 blocks", or "Reading …" and "Verifying …".
std::string BlockText(const RunKind& run, int block, int totalBlock);

// The window's caption once the link has said this; nothing when it stays.
std::optional<std::string> CaptionAfter(const RunKind& run, const std::string& message);

// The caption while the user works elsewhere: the time left to wait while `timing` tells that, else how far
// the run has come.
std::string AwayCaption(const std::string& timing, int percent);

// Whether the user is asked for a verification: after a programming that succeeded and was not cancelled,
// when the setting "Verify" is "1".
bool OffersVerification(const std::string& status, const std::string& verifySetting, bool cancelRequested);

}  // namespace burnwick
