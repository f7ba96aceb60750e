#include <algorithm>

#include "cli/CliTest.h"
#include "support/MatchesPattern.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

}  // namespace

// What a run leaves in the activity log. The tests' clock begins on 11/20/2026 at 11:59:30 PM.
class RunLog : public CliTest {
protected:
    std::string Image() { return Folder.Write("image.bin", SampleImage(ImageSize)); }
    int Download(std::vector<simulator::FaultOrder> faults = {}, bool verify = false) {
        auto options = UnitOfSize(ImageSize);
        options.Faults = std::move(faults);
        Connect(std::move(options));
        std::vector<std::string> arguments{"download", Image(), "--port", "COM2"};
        if (verify) {
            arguments.emplace_back("--verify");
        }
        return Run(arguments);
    }
    // What the log tells of the image behind its path.
    std::string RecordOf(const std::string& image) const {
        EXPECT_THAT(LogText(), StartsWith(image + "\r\n"));
        return LogText().substr(std::min(LogText().size(), image.size() + 2));
    }
};

TEST_F(RunLog, HoldsAWholeRecordOfAVerifiedProgramming) {
    EXPECT_EQ(Download({}, true), 0);
    EXPECT_THAT(RecordOf(Folder / "image.bin"),
                MatchesPattern("Flashed: 11/2[01]/2026 1[12]:[0-9][0-9]:[0-9][0-9] [AP]M\r\n"
                               "Elapsed time: 00:[0-9][0-9]\r\n"
                               "Status: Programming was completed successfully\\.\r\n"
                               "File Information: \r\n"
                               "Checksum: [0-9A-F]{4}\r\n"
                               "Version: 4\\.10\r\n"
                               "Date Stamp: 07/22/2004 15:05:09\r\n"
                               "Language: English/French\r\n"
                               "Size: 256KB\r\n"
                               "Verification: Verifying was successfully\\.\r\n"));
}

TEST_F(RunLog, HoldsNoVerificationWhereNoneWasMade) {
    EXPECT_EQ(Download(), 0);
    EXPECT_THAT(LogText(), Not(HasSubstr("Verification")));
}

TEST_F(RunLog, HoldsWhatAVerificationFound) {
    EXPECT_EQ(Download({{Fault::Mask7, 5}}, true), 7);
    EXPECT_THAT(LogText(), HasSubstr("Status: Programming was completed successfully.\r\n"));
    EXPECT_THAT(LogText(), HasSubstr("\r\nVerification: Verifying error: "));
}

TEST_F(RunLog, TellsOfTheImageThatWasSentThoughTheFileHasChanged) {
    Loop.At(Loop.Time() + 300ms, [this] { Folder.Write("image.bin", AnyBytes(ImageSize)); });
    EXPECT_EQ(Download(), 0);
    EXPECT_THAT(LogText(), HasSubstr("\r\nVersion: 4.10\r\n"));
}

TEST_F(RunLog, HoldsAnUploadWithWhatWasRead) {
    auto options = UnitOfSize(ImageSize);
    options.Flash = SampleImage(ImageSize);
    Connect(options);
    EXPECT_EQ(Run({"upload", Folder / "backup.bin", "--port", "COM2", "--chip", "2Mbit"}), 0);
    EXPECT_THAT(LogText(), StartsWith(Folder / "backup.bin" + "\r\nUploaded: 11/2"));
    EXPECT_THAT(LogText(), HasSubstr("Status: Uploading was completed successfully.\r\n"));
    EXPECT_THAT(LogText(), HasSubstr("Version: 4.10\r\n"));
    EXPECT_THAT(LogText(), HasSubstr("Size: 256KB\r\n"));
}

TEST_F(RunLog, HoldsAVerificationAloneWithItsResultAsTheStatus) {
    auto options = UnitOfSize(ImageSize);
    options.Flash = SampleImage(ImageSize);
    Connect(options);
    EXPECT_EQ(Run({"verify", Image(), "--port", "COM2"}), 0);
    EXPECT_THAT(LogText(), StartsWith(Folder / "image.bin" + "\r\nUploaded: "));
    EXPECT_THAT(LogText(), HasSubstr("\r\nStatus: Verifying was successfully.\r\n"));
}

TEST_F(RunLog, NeverCallsAVerificationThatFoundDifferencesASuccess) {
    Connect(UnitOfSize(ImageSize));
    EXPECT_EQ(Run({"verify", Image(), "--port", "COM2"}), 7);
    EXPECT_THAT(LogText(), HasSubstr("\r\nStatus: Verifying error: "));
    EXPECT_THAT(LogText(), Not(HasSubstr("successfully")));
}

TEST_F(RunLog, HoldsTheShortFormOfARunThatFailed) {
    EXPECT_EQ(Download({{Fault::Negative7, 5}}), 2);
    EXPECT_THAT(RecordOf(Folder / "image.bin"), MatchesPattern("Flashed: [^\r]*\r\n"
                                                               "Status: Transmitting error\\.\r\n"));
}

TEST_F(RunLog, HoldsARunThatWasCanceledOnceItHadStarted) {
    InterruptAt(5s);
    EXPECT_EQ(Download({{Fault::NoAnswer, 100}}), 4);
    EXPECT_THAT(LogText(), HasSubstr("Status: Programming was canceled.\r\n"));
}

TEST_F(RunLog, HoldsNothingOfARunThatNeverStarted) {
    EXPECT_EQ(Run({"download", Image(), "--port", "COM2"}), 1);
    EXPECT_EQ(LogText(), "");
}

TEST_F(RunLog, PartsItsRecordsByALineWithABlank) {
    Download();
    Download();
    EXPECT_THAT(LogText(), HasSubstr("Size: 256KB\r\n \r\n" + Folder / "image.bin" + "\r\n"));
}

TEST_F(RunLog, IsWholeByDefaultAndTheSettingSaysSoFromThenOn) {
    Download();
    EXPECT_EQ(Settings["Options/LogOption"], "&All");
    EXPECT_THAT(LogText(), HasSubstr("File Information: "));
}

TEST_F(RunLog, IsShortWhenTheSettingsSaySummary) {
    Settings["Options/LogOption"] = "&Summary";
    Download();
    EXPECT_THAT(LogText(), HasSubstr("Status: Programming was completed successfully."));
    EXPECT_THAT(LogText(), Not(HasSubstr("File Information: ")));
}

TEST_F(RunLog, IsNotKeptWhenTheSettingsDisableIt) {
    Settings["Options/LogOption"] = "&Disable";
    Download();
    EXPECT_EQ(LogText(), "");
    EXPECT_EQ(Settings["Options/LogOption"], "&Disable");
}

TEST_F(RunLog, ThatIsAFolderDisturbsNoRun) {
    std::filesystem::create_directory(Folder.Path() / "home" / "Burnwick.log");
    EXPECT_EQ(Download(), 0);
    EXPECT_TRUE(std::filesystem::is_directory(Folder.Path() / "home" / "Burnwick.log"));
}

TEST_F(RunLog, WithoutAFolderDisturbsNoRun) {
    std::filesystem::remove(Folder.Path() / "home");
    EXPECT_EQ(Download(), 0);
}

}  // namespace burnwick::test
