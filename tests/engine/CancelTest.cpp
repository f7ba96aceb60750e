#include <filesystem>

#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

}  // namespace

class Cancel : public LinkTest {
protected:
    void ExpectCanceled(const std::string& text) const {
        ASSERT_GE(Events.Messages.size(), 2U);
        EXPECT_EQ(*(Events.Messages.end() - 2), " ");
        EXPECT_EQ(Events.Messages.back(), text);
        for (const auto& message : Events.Messages) {
            EXPECT_EQ(message.find("successfully"), std::string::npos);
        }
    }
};

TEST_F(Cancel, WhileWaitingForTheUnitEndsTheRunWithinHalfASecond) {
    CancelAt(1200ms);
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_LE(Loop.Time(), 1700ms);
}

TEST_F(Cancel, WhileTheSpeedIsSettledEndsTheRunAtOnce) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600);
    CancelAt(1s);
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_EQ(Loop.Time(), 1s);
}

TEST_F(Cancel, WhenReadyToSendSendsNoBlock) {
    AgreesOn(ProgramMode, Speed57600);
    Flash.Progress = [this](int /*block*/, int /*total*/) { Flash.Execute(Method::Cancel); };
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_THAT(SentBlocks(), IsEmpty());
}

TEST_F(Cancel, WhileAwaitingAnAnswerEndsTheRunAtOnce) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 3);
    Unit.Hears("FF AA 03 03 00");
    CancelAt(3s);
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_EQ(Loop.Time(), 3s);
}

TEST_F(Cancel, InsideABlockOfAnUploadStoresNothingOfIt) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 1);
    Unit.Hears("FF AA 03 01 00").Says("FF AA 06 00 11 22");
    CancelAt(1s);
    RunUpload(2);
    ExpectCanceled("Uploading was canceled.");
    EXPECT_EQ(Loop.Time(), 1s);
}

TEST_F(Cancel, OfAnUploadLeavesNoFile) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 3);
    Unit.Hears("FF AA 03 03 00");
    CancelAt(3s);
    RunUpload(10);
    EXPECT_FALSE(std::filesystem::exists(UploadPath()));
}

TEST_F(Cancel, OfADownloadLeavesTheImageAsItWas) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 3);
    Unit.Hears("FF AA 03 03 00");
    CancelAt(3s);
    const Bytes image = AnyBytes(65'536);
    RunDownload(image);
    EXPECT_EQ(ReadFile(Flash.FileName()), image);
}

TEST_F(Cancel, WithTheLastAnswerLeavesNoSuccessBehind) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 2);
    Flash.Progress = [this](int block, int total) {
        if (block == total && total > 0) {
            // comes with the same Yield as the answer to the last block
            CancelAt(Loop.Time() + Dialogue::UsualDelay);
        }
    };
    RunUpload(2);
    ExpectCanceled("Uploading was canceled.");
    EXPECT_FALSE(std::filesystem::exists(UploadPath()));
}

TEST_F(Cancel, OnceTheRunHasSucceededChangesNothing) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 1);
    Flash.Message = [this, record = Flash.Message](const RunLine& line) {
        record(line);
        if (line.Kind == LineKind::Completed) {
            Flash.Execute(Method::Cancel);
        }
    };
    RunUpload(1);
    EXPECT_EQ(Events.Messages.back(), "Now rebooting the unit...");
    EXPECT_TRUE(std::filesystem::exists(UploadPath()));
}

TEST_F(Cancel, WithoutARunCancelsTheNextOneOnItsFirstPass) {
    Flash.Execute(Method::Cancel);
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_THAT(SentCommands(), ElementsAre(Probe, Finish));
    EXPECT_EQ(Loop.Time(), 500ms);
}

TEST_F(Cancel, IsUsedUpByTheRunItCancelled) {
    Flash.Execute(Method::Cancel);
    RunDownload(AnyBytes(65'536));
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 256);
    Events = {};
    RunDownload(AnyBytes(65'536));
    EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
}

TEST_F(Cancel, OutlivesARunThatNeverOpenedItsPort) {
    Flash.Execute(Method::Cancel);
    RunDownload(AnyBytes(100));
    EXPECT_THAT(Events.Messages, ElementsAre("Error: Invalid file size."));
    Events = {};
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
}

TEST_F(Cancel, DoesNotStopASecondRunFromBeingRefusedInsideTheFirst) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600);
    Loop.At(1s, [this] {
        Flash.Execute(Method::Upload);
        Flash.Execute(Method::Cancel);
    });
    RunDownload(AnyBytes(65'536));
    ExpectCanceled("Programming was canceled.");
    EXPECT_THAT(Events.Messages, Not(Contains("Uploading was canceled.")));
}

}  // namespace burnwick::test
