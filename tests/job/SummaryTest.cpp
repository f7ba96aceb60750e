#include "job/Summary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

namespace {

modBinFileInfo::BinFileInfo InfoOfKind(int kind) {
    modBinFileInfo::BinFileInfo info;
    info.Checksum = "1234ABCD";
    info.ChecksumShort = "ABCD";
    info.Version = "4.10";
    info.Language = "English/French";
    info.DateStamp = "07/22/2004";
    info.ImageKind = kind;
    return info;
}

}  // namespace

TEST(Summary, ShowsTheLastFourDigitsOfAnOlderImagesChecksum) {
    EXPECT_EQ(SummaryOf(InfoOfKind(3), false).Checksum, "ABCD");
}

TEST(Summary, ShowsTheWholeChecksumOfANewerImage) {
    EXPECT_EQ(SummaryOf(InfoOfKind(5), false).Checksum, "1234ABCD");
}

TEST(Summary, ShowsTheWholeChecksumOfAnyImageWhenAsked) {
    EXPECT_EQ(SummaryOf(InfoOfKind(3), true).Checksum, "1234ABCD");
}

TEST(Summary, ShowsVersionLanguageAndDateAsTheyAre) {
    const auto summary = SummaryOf(InfoOfKind(3), false);
    EXPECT_EQ(summary.Version, "4.10");
    EXPECT_EQ(summary.Language, "English/French");
    EXPECT_EQ(summary.DateStamp, "07/22/2004");
}

namespace {

modBinFileInfo::BinFileInfo InfoOfModel(const std::string& model) {
    auto info = InfoOfKind(3);
    info.Model = model;
    info.FileName = "unit.bin";
    info.ImageFileName = "INSIDE.BIN";
    info.FileSize = "512KB";
    return info;
}

std::string LineOf(const modBinFileInfo::BinFileInfo& info) {
    return SoftwareLine(info, SummaryOf(info, false));
}

}  // namespace

TEST(SoftwareLine, HasSevenFieldsOfAnImageWithAModel) {
    EXPECT_EQ(LineOf(InfoOfModel("VX-1600")),
              "unit.bin    VX-1600    4.10    ABCD    07/22/2004    English/French    512KB");
}

TEST(SoftwareLine, HasSixFieldsOfAnImageWithoutAModel) {
    EXPECT_EQ(LineOf(InfoOfModel(modBinFileInfo::NotAvailable)),
              "unit.bin    4.10    ABCD    07/22/2004    English/French    512KB");
}

TEST(SoftwareLine, HasTheChecksumThatIsShown) {
    const auto info = InfoOfModel("VX-1600");
    EXPECT_EQ(SoftwareLine(info, SummaryOf(info, true)),
              "unit.bin    VX-1600    4.10    1234ABCD    07/22/2004    English/French    512KB");
}

TEST(SoftwareLine, KeepsTheFieldsInTheirPlacesWhenOneIsEmpty) {
    auto info = InfoOfModel("VX-1600");
    info.DateStamp = "";
    EXPECT_EQ(LineOf(info), "unit.bin    VX-1600    4.10    ABCD        English/French    512KB");
}

TEST(SoftwareLine, IsOneLineWhateverTheImageTells) {
    auto info = InfoOfModel("VX\r\n1600");
    info.FileName = "a\tb\n\xC3\xBC.bin";
    EXPECT_EQ(LineOf(info),
              "a b \xC3\xBC.bin    VX  1600    4.10    ABCD    07/22/2004    English/French    512KB");
}

class RunRecord : public ::testing::Test {
protected:
    ActivityRecord RecordOfImage(std::size_t size) {
        return RecordOf(Run, Texts, Folder.Write("image.bin", AnyBytes(size)),
                        SummaryOf(InfoOfKind(3), false));
    }

    TempFolder Folder;
    RunResult Run;
    RunTexts Texts;
};

TEST_F(RunRecord, IsOfARunThatStartedOnceThereWasContact) {
    EXPECT_FALSE(RecordOfImage(700).Started);
    Run.Baud = 9600;
    EXPECT_TRUE(RecordOfImage(700).Started);
}

TEST_F(RunRecord, IsASuccessByTheRunsOutcomeAlone) {
    Texts.TakeMessage({"Error: /flashed successfully/a.bin cannot be deleted.", LineKind::FileError});
    EXPECT_FALSE(RecordOfImage(700).Succeeded);
    Run.Outcome = Outcome::Succeeded;
    EXPECT_TRUE(RecordOfImage(700).Succeeded);
}

TEST_F(RunRecord, HoldsStatusTimingAndSummary) {
    Texts.Timing = {"Elapsed time: 00:42", true};
    Texts.TakeMessage({"Programming was completed successfully.", LineKind::Completed});
    const auto record = RecordOfImage(700);
    EXPECT_EQ(record.Status, "Programming was completed successfully.");
    EXPECT_EQ(record.Timing, "Elapsed time: 00:42");
    EXPECT_EQ(record.Checksum, "ABCD");
    EXPECT_EQ(record.Version, "4.10");
    EXPECT_EQ(record.DateStamp, "07/22/2004");
    EXPECT_EQ(record.Language, "English/French");
}

TEST_F(RunRecord, HoldsTheFullPathOfTheImage) {
    const auto before = std::filesystem::current_path();
    Folder.Write("image.bin", {});
    std::filesystem::current_path(Folder.Path());
    EXPECT_EQ(RecordOf(Run, Texts, "image.bin", {}).ImageFileName,
              (std::filesystem::current_path() / "image.bin").string());
    std::filesystem::current_path(before);
}

TEST_F(RunRecord, TellsTheSizeInWholeKB) {
    EXPECT_EQ(RecordOfImage(700).Size, "00KB");
    EXPECT_EQ(RecordOfImage(1'572'864).Size, "1,536KB");
}

TEST_F(RunRecord, TellsNoSizeOfAFileThatIsGone) {
    EXPECT_EQ(RecordOf(Run, Texts, Folder / "gone.bin", {}).Size, "");
}

TEST_F(RunRecord, HoldsTheResultOfAVerification) {
    EXPECT_FALSE(RecordOfImage(700).Verifying);
    Texts.BeginVerification();
    Texts.EndVerification("Verifying was successfully.");
    const auto record = RecordOfImage(700);
    EXPECT_TRUE(record.Verifying);
    EXPECT_EQ(record.Result, "Verifying was successfully.");
}

}  // namespace burnwick::test
