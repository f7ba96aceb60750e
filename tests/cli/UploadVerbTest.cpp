#include <filesystem>

#include "cli/CliTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::SizeIs;

namespace fs = std::filesystem;

}  // namespace

class UploadVerb : public CliTest {
protected:
    std::string File() const { return Folder / "file.bin"; }
};

TEST_F(UploadVerb, ReadsTheUnitsFlashIntoANewFile) {
    Connect(UnitOfSize(262'144));
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 0);
    EXPECT_EQ(ReadFile(File()), AnyBytes(262'144, 7));
    EXPECT_THAT(OutLines(), Contains("Uploading was completed successfully."));
}

TEST_F(UploadVerb, ReadsSoMuchOfEachChip) {
    Connect(UnitOfSize(1'048'576));
    for (const auto& [chip, size] :
         {std::pair{"1Mbit", 65'536}, {"2Mbit", 262'144}, {"4Mbit", 524'288}, {"8Mbit", 1'048'576}}) {
        EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", chip, "--force"}), 0);
        EXPECT_THAT(ReadFile(File()), SizeIs(size)) << chip;
    }
}

TEST_F(UploadVerb, EndsWith6AndLosesNothingWhenTheFileExists) {
    Connect(UnitOfSize(262'144));
    Folder.Write("file.bin", AnyBytes(10));
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 6);
    EXPECT_EQ(ReadFile(File()), AnyBytes(10));
    EXPECT_EQ(ErrLines(),
              std::vector{"burnwick-cli: " + File()
                          + " exists already. Give --force to replace it, or name another file."});
    EXPECT_EQ(Unit->Journal().Probes, 0);
}

TEST_F(UploadVerb, TellsARefusalAsJsonToo) {
    Folder.Write("file.bin", AnyBytes(10));
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit", "--json"}), 6);
    EXPECT_EQ(Json()["result"], "file-error");
    EXPECT_EQ(Json()["port"], "");
}

TEST_F(UploadVerb, ReplacesAFileWhenForced) {
    Connect(UnitOfSize(262'144));
    Folder.Write("file.bin", AnyBytes(10));
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit", "--force"}), 0);
    EXPECT_THAT(ReadFile(File()), SizeIs(262'144));
}

TEST_F(UploadVerb, KeepsAFileThatItWasForcedToReplaceWhenThePortIsNotThere) {
    Folder.Write("file.bin", AnyBytes(10));
    EXPECT_EQ(Run({"upload", File(), "--port", "COM17", "--chip", "2Mbit", "--force"}), 5);
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS1 is in use by cat (process 7)"};
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit", "--force"}), 5);
    EXPECT_EQ(ErrLines(),
              std::vector<std::string>{
                  "burnwick-cli: COM2 is not available. /dev/ttyS1 is in use by cat (process 7)."});
    EXPECT_EQ(ReadFile(File()), AnyBytes(10));
}

TEST_F(UploadVerb, EndsWith6ForAFolderInPlaceOfTheFile) {
    fs::create_directory(File());
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit", "--force"}), 6);
    EXPECT_TRUE(fs::is_directory(File()));
    EXPECT_THAT(ErrLines(), SizeIs(1));
}

TEST_F(UploadVerb, EndsWith6IntoAMissingFolder) {
    EXPECT_EQ(Run({"upload", Folder / "no/file.bin", "--port", "COM2", "--chip", "2Mbit"}), 6);
    EXPECT_THAT(Err(), HasSubstr("(No such file or directory)."));
    EXPECT_THAT(ErrLines(), SizeIs(1));
}

TEST_F(UploadVerb, CreatesNothingWhenThePortIsNotAvailable) {
    PortTrouble = CommError{CommErrorNumber::NotSerial, "/dev/ttyS1: no such device"};
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 5);
    EXPECT_FALSE(fs::exists(File()));
}

TEST_F(UploadVerb, LeavesNoFileWhenNobodyAnswers) {
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 1);
    EXPECT_FALSE(fs::exists(File()));
}

TEST_F(UploadVerb, LeavesNoFileWhenTheTransferFails) {
    auto options = UnitOfSize(262'144);
    options.Faults = {{simulator::Fault::CutShort, 500}};
    Connect(options);
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 2);
    EXPECT_FALSE(fs::exists(File()));
    EXPECT_THAT(Err(), HasSubstr("failed at block 501 of 1024"));
}

TEST_F(UploadVerb, LeavesNoFileWhenInterrupted) {
    auto options = UnitOfSize(262'144);
    options.Faults = {{simulator::Fault::NoAnswer, 500}};
    Connect(options);
    InterruptAt(8s);
    EXPECT_EQ(Run({"upload", File(), "--port", "COM2", "--chip", "2Mbit"}), 4);
    EXPECT_FALSE(fs::exists(File()));
    EXPECT_EQ(Unit->Journal().FinishMessages, 1);
}

}  // namespace burnwick::test
