#include "engine/RunResult.h"

#include <filesystem>
#include <stdexcept>

#include "support/LinkTest.h"

// What a run leaves in LastRun.
namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

namespace fs = std::filesystem;

}  // namespace

class LastRun : public LinkTest {
protected:
    // Programs 256 blocks, of which the unit acknowledges so many; then the run is cancelled.
    void ProgramsUntil(int blocks) {
        AgreesOn(ProgramMode, Speed57600);
        Unit.AcknowledgesBlocks(0, blocks);
        if (blocks < 256) {
            Unit.Hears("FF AA 03 " + ToHex({std::byte(blocks)}) + " 00");
            CancelAt(8s);
        }
        RunDownload(AnyBytes(65'536));
    }

    const RunResult& Result() const { return Flash.LastRun(); }
};

TEST_F(LastRun, IsNoSuccessBeforeThereWasOne) {
    OpensTheLink = false;
    EXPECT_FALSE(Result().Succeeded());
}

TEST_F(LastRun, OfACompletedDownloadHasSpeedBlocksAndTime) {
    ProgramsUntil(256);
    EXPECT_TRUE(Result().Succeeded());
    EXPECT_EQ(Result().Baud, 57600);
    EXPECT_EQ(Result().Blocks, 256);
    EXPECT_EQ(Result().Acknowledged, 256);
    EXPECT_EQ(Result().TotalBlocks, 256);
    EXPECT_GT(Result().Elapsed, 1s);
    EXPECT_FALSE(Result().LeavesFlashIncomplete());
}

TEST_F(LastRun, OfASilentUnitHasNeitherSpeedNorTime) {
    Unit.Hears(Probe);
    CancelAt(62s);
    RunDownload(AnyBytes(65'536));
    EXPECT_EQ(Result().Outcome, Outcome::NoResponse);
    EXPECT_EQ(Result().Baud, 0);
    EXPECT_EQ(Result().Blocks, 0);
    EXPECT_EQ(Result().Elapsed, std::nullopt);
}

TEST_F(LastRun, OfANegativeAnswerToABlockLeavesTheFlashIncomplete) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 3);
    Unit.Hears("FF AA 03 03 00").Says("FF AA 07 00");
    RunDownload(AnyBytes(65'536));
    EXPECT_EQ(Result().Outcome, Outcome::TransmittingError);
    EXPECT_EQ(Result().Blocks, 4);
    EXPECT_EQ(Result().Acknowledged, 3);
    EXPECT_TRUE(Result().LeavesFlashIncomplete());
}

TEST_F(LastRun, OfAnUnsuitableImageLeavesTheFlashAsItWas) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears(Identify).Says(Ready);
    RunDownload(ImageWith(1'048'576, 0x10000, {0x02, 0x00, 0x9E, 0x02}));
    EXPECT_EQ(Result().Outcome, Outcome::NotCompatible);
    EXPECT_FALSE(Result().LeavesFlashIncomplete());
}

TEST_F(LastRun, OfARunThatWasCancelledInMidTransferLeavesTheFlashIncomplete) {
    ProgramsUntil(3);
    EXPECT_EQ(Result().Outcome, Outcome::Canceled);
    EXPECT_EQ(Result().Baud, 57600);
    EXPECT_TRUE(Result().LeavesFlashIncomplete());
}

TEST_F(LastRun, OfARunThatWasCancelledBeforeItsFirstBlockLeavesTheFlashAsItWas) {
    AgreesOn(ProgramMode, Speed57600);
    Flash.Progress = [this](int /*block*/, int /*total*/) { Flash.Execute(Method::Cancel); };
    RunDownload(AnyBytes(65'536));
    EXPECT_EQ(Result().Outcome, Outcome::Canceled);
    EXPECT_FALSE(Result().LeavesFlashIncomplete());
}

TEST_F(LastRun, OfARefusedPortHasThePortsError) {
    OpensTheLink = false;
    Unit.RefuseToOpen({CommErrorNumber::Busy, "in use"});
    RunDownload(AnyBytes(65'536));
    EXPECT_EQ(Result().Outcome, Outcome::PortError);
    ASSERT_TRUE(Result().PortError);
    EXPECT_EQ(Result().PortError->Number, CommErrorNumber::Busy);
}

TEST_F(LastRun, OfAFileOfNoImagesLengthNamesThatError) {
    OpensTheLink = false;
    RunDownload(AnyBytes(1000));
    EXPECT_EQ(Result().Outcome, Outcome::FileError);
    ASSERT_TRUE(Result().FileError);
    EXPECT_EQ(Result().FileError->What, FileError::Kind::InvalidSize);
}

TEST_F(LastRun, OfAMissingFileNamesFileAndReason) {
    OpensTheLink = false;
    Flash.SetFileName(Folder / "gone.bin");
    Flash.Execute(Method::Download);
    EXPECT_EQ(Result().Outcome, Outcome::FileError);
    ASSERT_TRUE(Result().FileError);
    EXPECT_EQ(Result().FileError->What, FileError::Kind::NotReadable);
    EXPECT_THAT(Result().FileError->Text, HasSubstr("gone.bin (No such file or directory)"));
}

TEST_F(LastRun, OfAnUploadOntoAFolderSaysThatItCannotBeDeleted) {
    OpensTheLink = false;
    fs::create_directory(UploadPath());
    RunUpload(1);
    ASSERT_TRUE(Result().FileError);
    EXPECT_EQ(Result().FileError->What, FileError::Kind::NotDeletable);
}

TEST_F(LastRun, OfAnUploadIntoAMissingFolderSaysThatItCannotBeWritten) {
    OpensTheLink = false;
    Flash.SetUploadBlock(1);
    Flash.SetFileName(Folder / "none/upload.bin");
    Flash.Execute(Method::Upload);
    ASSERT_TRUE(Result().FileError);
    EXPECT_EQ(Result().FileError->What, FileError::Kind::NotWritable);
}

TEST_F(LastRun, IsForgottenWhenTheNextOneBegins) {
    OpensTheLink = false;
    Flash.SetCommPort(17);
    RunDownload(AnyBytes(65'536));
    RunDownload(AnyBytes(1000));
    EXPECT_EQ(Result().PortError, std::nullopt);
    EXPECT_EQ(Result().Outcome, Outcome::FileError);
}

TEST_F(LastRun, KeepsACompletedUploadWhenAHandlerThrowsAfterIt) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 2);
    Flash.Message = [](const RunLine& line) {
        if (line.Kind == LineKind::Completed) {
            throw std::runtime_error("out of luck");
        }
    };
    EXPECT_THROW(RunUpload(2), std::runtime_error);
    EXPECT_EQ(fs::file_size(UploadPath()), 512U);
    EXPECT_TRUE(Result().Succeeded());
}

}  // namespace burnwick::test
