#include "job/WindowTexts.h"

#include <gtest/gtest.h>

namespace burnwick::test {

namespace {

const RunKind DownloadRun{"Burnwick", "unit.bin", false, false};
const RunKind UploadRun{"Burnwick", "unit.bin", true, false};
const RunKind ReadBackRun{"Burnwick", "unit.bin", false, true};

const RunLine ReadyToProgram{"Getting ready to start programming...", LineKind::GettingReady};
const RunLine ReadyToUpload{"Getting ready to upload data...", LineKind::GettingReady};
const RunLine TimeOut{"Timeout.", LineKind::Timeout};

}  // namespace

TEST(ApplicationTitle, OfAReleaseIsTheTitleAlone) {
    EXPECT_EQ(ApplicationTitle("Burnwick", "2.08.1000"), "Burnwick");
}

TEST(ApplicationTitle, OfAPreReleaseTellsTheVersionWithTwoDigitsOfItsBuild) {
    EXPECT_EQ(ApplicationTitle("Burnwick Pre", "2.08.1007"), "Burnwick Pre 2.08.07");
}

TEST(ReadyText, NamesPortAndSpeed) {
    EXPECT_EQ(ReadyText(12, "115200"), "Ready on COM12 (115200bps).");
}

TEST(StatusAfterPortChoice, NamesTheNewPortInPlaceOfTheOldOne) {
    EXPECT_EQ(StatusAfterPortChoice("Ready on COM1 (57600bps).", 3, "115200"), "Ready on COM3 (115200bps).");
    EXPECT_EQ(StatusAfterPortChoice("CommPort COM1 is not available.", 3, "57600"),
              "Ready on COM3 (57600bps).");
}

TEST(StatusAfterPortChoice, StaysWhereNoPortIsNamed) {
    for (const char* status : {"", "COM", "COM1 is gone", "Programming was completed successfully.",
                               "Communication with CommPort"}) {
        EXPECT_EQ(StatusAfterPortChoice(status, 3, "57600"), status);
    }
}

TEST(EndsWaiting, AReadyUnitOrATimeOutDoes) {
    EXPECT_TRUE(EndsWaiting(DownloadRun, ReadyToProgram));
    EXPECT_TRUE(EndsWaiting(UploadRun, TimeOut));
    EXPECT_FALSE(EndsWaiting(DownloadRun, {"Erasing the chip..."}));
}

TEST(EndsWaiting, AReadBackWaitsWithoutBlinking) {
    EXPECT_FALSE(EndsWaiting(ReadBackRun, ReadyToUpload));
}

TEST(EndsWaiting, AFileOfThatNameDoesNot) {
    EXPECT_FALSE(EndsWaiting(DownloadRun, {"Opening /images/Getting ready.bin..."}));
}

TEST(BarAfter, AskedToWaitSaysSo) {
    EXPECT_EQ(BarAfter(LineKind::PleaseWait), BarChange::PleaseWait);
}

TEST(BarAfter, SuccessFillsIt) {
    EXPECT_EQ(BarAfter(LineKind::Completed), BarChange::Full);
}

TEST(BarAfter, FailureFadesIt) {
    EXPECT_EQ(BarAfter(LineKind::TransmittingError), BarChange::Faded);
    EXPECT_EQ(BarAfter(LineKind::NotCompatible), BarChange::Faded);
    EXPECT_EQ(BarAfter(LineKind::Canceled), BarChange::Faded);
}

TEST(BarAfter, AnyOtherLineLeavesItAlone) {
    for (const LineKind kind :
         {LineKind::Text, LineKind::GettingReady, LineKind::Timeout, LineKind::FileError}) {
        EXPECT_EQ(BarAfter(kind), BarChange::None);
    }
}

TEST(Announcement, OfARunIsItsStatus) {
    RunTexts texts;
    texts.Status = "Transmitting error.";
    EXPECT_EQ(Announcement(texts), "Transmitting error.");
}

TEST(Announcement, OfAVerificationIsItsVerdict) {
    RunTexts texts;
    texts.BeginVerification();
    texts.EndVerification("Verifying error: 3 bytes are different.");
    texts.Status = "Programming was completed successfully.";
    EXPECT_EQ(Announcement(texts), "Verifying error: 3 bytes are different.");
}

TEST(Announcement, OfAVerificationWithoutAVerdictIsNoSuccess) {
    RunTexts texts;
    texts.BeginVerification();
    texts.Status = "Programming was completed successfully.";
    EXPECT_EQ(Announcement(texts), "The verification could not be finished.");
}

TEST(PercentOf, CutsFractionsOff) {
    EXPECT_EQ(PercentOf(1, 3), 33);
    EXPECT_EQ(PercentOf(2, 3), 66);
    EXPECT_EQ(PercentOf(3, 3), 100);
    EXPECT_EQ(PercentOf(32'767, 32'767), 100);
}

TEST(PercentOf, IsZeroWithoutBlocks) {
    EXPECT_EQ(PercentOf(0, 0), 0);
}

TEST(BlockText, TellsWhatIsDoneWithTheBlock) {
    EXPECT_EQ(BlockText(DownloadRun, 3, 256), "Sending block 3 of 256 blocks");
    EXPECT_EQ(BlockText(UploadRun, 3, 256), "Reading block 3 of 256 blocks");
    EXPECT_EQ(BlockText(ReadBackRun, 3, 256), "Verifying block 3 of 256 blocks");
}

TEST(CaptionAfter, TheUnitIsReadyNamesTheFile) {
    EXPECT_EQ(CaptionAfter(DownloadRun, ReadyToProgram), "Burnwick - Programming unit.bin...");
    EXPECT_EQ(CaptionAfter(UploadRun, ReadyToUpload), "Burnwick - Uploading unit.bin...");
}

TEST(CaptionAfter, TheUnitIsReadyToBeReadBackStays) {
    EXPECT_EQ(CaptionAfter(ReadBackRun, ReadyToUpload), std::nullopt);
}

TEST(CaptionAfter, AnOutcomeIsTheOutcomeWithoutItsFullStop) {
    EXPECT_EQ(CaptionAfter(DownloadRun, {"Programming was completed successfully.", LineKind::Completed}),
              "Burnwick - Programming was completed successfully");
    EXPECT_EQ(CaptionAfter(DownloadRun, {"The software is not compatible.", LineKind::NotCompatible}),
              "Burnwick - The software is not compatible");
    EXPECT_EQ(CaptionAfter(UploadRun, {"Transmitting error.", LineKind::TransmittingError}),
              "Burnwick - Transmitting error");
    EXPECT_EQ(CaptionAfter(UploadRun, {"Uploading was canceled.", LineKind::Canceled}),
              "Burnwick - Uploading was canceled");
}

TEST(CaptionAfter, ATimeoutIsTheTimeout) {
    EXPECT_EQ(CaptionAfter(DownloadRun, TimeOut), "Burnwick - Timeout");
}

TEST(CaptionAfter, AnyOtherLineStays) {
    for (const RunLine& line :
         {RunLine{" "},
          {"Erasing the chip..."},
          {"Opening successfully.bin..."},
          {"Please wait for a few seconds...", LineKind::PleaseWait},
          {"Error: Cannot access to canceled.bin (it is a folder).", LineKind::FileError}}) {
        EXPECT_EQ(CaptionAfter(DownloadRun, line), std::nullopt) << line.Text;
    }
}

TEST(AwayCaption, TellsTheTimeLeftToWait) {
    EXPECT_EQ(AwayCaption({"Timeout: 42 seconds", false}, 0), "Burnwick - 42 seconds");
}

TEST(AwayCaption, TellsHowFarATransferHasCome) {
    EXPECT_EQ(AwayCaption({"Elapsed time: 00:42", true}, 66), "Burnwick - 66%");
}

TEST(AwayCaption, IsShortBeforeThereIsAnyTiming) {
    EXPECT_EQ(AwayCaption({}, 0), "Burnwick - ");
}

}  // namespace burnwick::test
