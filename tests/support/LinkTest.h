#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/SerialFlash.h"
#include "support/Dialogue.h"
#include "support/Hex.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

inline constexpr auto Probe = "FF AA 00 61";
inline constexpr auto FlashRequest = "FF CC 11 FE 06 00 10 00 00 00 01 00 00 00 00 00 00 00 00 00 00 FF";
inline constexpr auto UploadMode = "FF AA 09 F6";
inline constexpr auto ProgramMode = "FF AA 0A F5";
inline constexpr auto Speed57600 = "FF AA 02 FD";
inline constexpr auto Speed115200 = "FF AA 12 ED";
inline constexpr auto Identify = "FF AA 0C F3";
inline constexpr auto Finish = "FF AA 04 FB";
inline constexpr auto Ready = "FF AA 05 00";
inline constexpr auto Acknowledge = "FF AA 06 00";

// What a run raised.
struct Raised {
    std::vector<std::string> Messages;
    std::vector<std::string> Timings;
    std::vector<std::pair<int, int>> Progress;
    // All three in the order in which they came; progress as "Progress(2, 256)".
    std::vector<std::string> All;
    std::vector<std::string> Trace;
};

// Lets a link's events be looked at afterwards.
void Record(SerialFlash& flash, Raised& into);

// A link and a unit that follows a script, in virtual time. Every run must follow the script to its end, send
// the finish message last and close the port.
class LinkTest : public ::testing::Test {
protected:
    LinkTest();
    void TearDown() override;

    // Scripts the unit's side until it is ready for blocks: the probe, the mode, the speed request if there
    // is one.
    void AgreesOn(const char* mode, const char* speed);

    void RunDownload(const Bytes& image);
    // Uploads into the file "upload.bin" of Folder.
    void RunUpload(int blocks);
    std::string UploadPath() const { return Folder / "upload.bin"; }

    // A frame that was written, as digits.
    std::string SentFrame(std::size_t at) const { return ToHex(Unit.Sent().at(at).Content); }
    // The frames that were written, the blocks apart.
    std::vector<std::string> SentCommands() const;
    std::vector<Bytes> SentBlocks() const;
    void CancelAt(Microseconds moment);

    TempFolder Folder;
    VirtualLoop Loop;
    Dialogue& Unit;
    MSComm Port;
    SerialFlash Flash;
    Raised Events;
    bool OpensTheLink = true;   // false for a run that must end before it sends a byte
    bool FinishArrives = true;  // false when the line is gone by then
};

}  // namespace burnwick::test
