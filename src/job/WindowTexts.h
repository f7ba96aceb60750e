#pragma once

#include <optional>
#include <string>

#include "job/RunTexts.h"

namespace burnwick {

// What a run is, as far as its window's texts tell it.
struct RunKind {
    std::string Title;     // the application's, with which captions begin
    std::string FileName;  // the image file's, without its folder
    bool IsUpload = false;
    bool Verifying = false;  // its read-back
};

// The application's title: that of a release before its time ("… Pre") tells the version, its build number
// cut to two digits. `version` is "2.08.1000".
std::string ApplicationTitle(const std::string& title, const std::string& version);

// What an idle window says: "Ready on COM1 (57600bps)."
std::string ReadyText(int port, const std::string& baudRate);

// The status once the user has chosen port and speed: a status that names a port, but does not begin with it,
// is that of an idle window again; any other stays.
std::string StatusAfterPortChoice(const std::string& status, int port, const std::string& baudRate);

// How many percent of the blocks have gone, fractions cut off; 0 without blocks.
int PercentOf(int block, int totalBlock);

// "Sending block 3 of 256 blocks", or "Reading …" and "Verifying …".
std::string BlockText(const RunKind& run, int block, int totalBlock);

// The window's caption once the link has said this; nothing when it stays.
std::optional<std::string> CaptionAfter(const RunKind& run, const RunLine& line);

// True once the link has said this: the wait for the unit is over, and its status blinks no more.
bool EndsWaiting(const RunKind& run, const RunLine& line);

// What happens to the percent bar once the link has said this.
enum class BarChange {
    None,
    PleaseWait,  // full, with "Please wait..." in it
    Full,        // full, with its percentage
    Faded,       // it takes its idle colours, and shows them when it is drawn the next time
};
BarChange BarAfter(LineKind kind);

// The caption while the user works in another window: the time left to wait for the unit, or the percentage
// of the transfer.
std::string AwayCaption(const RunTiming& timing, int percent);

// What a user who is elsewhere is told of a run that has ended: its status, or the verdict of its
// verification.
std::string Announcement(const RunTexts& texts);

}  // namespace burnwick
