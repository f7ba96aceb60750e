#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;

constexpr int Blocks = 256;

Bytes Family1Image() {
    return AnyBytes(65'536);
}

// 260 blocks.
Bytes Family2Image() {
    return ImageWith(66'560, 0, {0xC0, 0xDE, 0x01, 0x57});
}

}  // namespace

// Each silence limit, from the last input to the end of the run. Ticks of 100 ms whose phase is free: a limit
// strikes up to one tick early.
class Silence : public LinkTest {
protected:
    // Remembers when the run reports its outcome.
    void SetUp() override {
        const auto record = Flash.Message;
        Flash.Message = [this, record](const RunLine& line) {
            record(line);
            if (line.Kind == LineKind::TransmittingError) {
                FailedAt = Loop.Time();
            }
        };
    }

    void ExpectFailureAfter(Microseconds silence, Microseconds since) const {
        EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
        EXPECT_GT(FailedAt - since, silence - 101ms);
        EXPECT_LE(FailedAt - since, silence + 1ms);
    }

    // When the frame was sent; its answer, had there been one, would come 5 ms later.
    Microseconds SentAt(std::size_t at) const { return Unit.Sent().at(at).At; }
    std::size_t LastFrameBeforeFinish() const { return Unit.Sent().size() - 2; }

    Microseconds FailedAt{0};
};

TEST_F(Silence, WhileTheSpeedIsSettledEndsTheRunAfter2Seconds) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600);
    RunDownload(Family1Image());
    ExpectFailureAfter(2s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, AfterTheSpeedAcknowledgementEndsTheRunAfter2Seconds) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge);
    RunDownload(Family1Image());
    ExpectFailureAfter(2s, SentAt(LastFrameBeforeFinish()) + Dialogue::UsualDelay + 5ms);
}

TEST_F(Silence, InMidTransferEndsTheRunAfter10Seconds) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 100);
    Unit.Hears("FF AA 03 64 00");
    RunDownload(Family1Image());
    ExpectFailureAfter(10s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, AfterTheLastBlockOfFamily1EndsTheRunAfter3Seconds) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, Blocks - 1);
    Unit.Hears("FF AA 03 FF 00");
    RunDownload(Family1Image());
    ExpectFailureAfter(3s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, AfterTheLastBlockOfFamily2EndsTheRunAfter60Seconds) {
    Loop.At(100ms, [this] { Unit.SaysUnasked(0us, "FF AA 05 00"); });
    Unit.Hears(FlashRequest);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(Acknowledge).Says(100ms, Ready);
    Unit.AcknowledgesBlocks(0, 259);
    Unit.Hears("FF AA 03 03 01");
    RunDownload(Family2Image());
    ExpectFailureAfter(60s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, AfterTheLastBlockOfAnUnmarkedImageEndsTheRunAfter60Seconds) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 1023);
    Unit.Hears("FF AA 03 FF 03");
    RunDownload(AnyBytes(262'144));
    ExpectFailureAfter(60s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, AfterTheLastBlockRequestOfAnUploadEndsTheRunAfter60Seconds) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 1);
    Unit.Hears("FF AA 03 01 00");
    RunUpload(2);
    ExpectFailureAfter(60s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, InsideABlockOfAnUploadEndsTheRunAfter2Seconds) {
    AgreesOn(UploadMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says("FF AA 06 00 11 22 33");
    RunUpload(2);
    ExpectFailureAfter(2s, SentAt(LastFrameBeforeFinish()) + Dialogue::UsualDelay);
}

TEST_F(Silence, JustShortOfALimitIsTolerated) {
    Unit.Hears(Probe).Says(Ready);
    Unit.Hears(ProgramMode);
    Unit.Hears(Speed57600).Says(1850ms, Acknowledge).Says(1850ms, Ready);
    Unit.Hears("FF AA 03 00 00").Says(9850ms, Acknowledge);
    Unit.AcknowledgesBlocks(1, Blocks - 2);
    Unit.Hears("FF AA 03 FF 00").Says(2850ms, Acknowledge);
    RunDownload(Family1Image());
    EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
}

TEST_F(Silence, OfNearlyAMinuteAfterTheLastBlockOfAnUnmarkedImageIsTolerated) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 1023);
    Unit.Hears("FF AA 03 FF 03").Says(59'850ms, Acknowledge);
    RunDownload(AnyBytes(262'144));
    EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
}

TEST_F(Silence, OfFewerThanFourBytesIsSilence) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says("FF AA 06");
    RunDownload(Family1Image());
    ExpectFailureAfter(10s, SentAt(LastFrameBeforeFinish()));
}

TEST_F(Silence, IsCountedAnewAfterAChunkWithoutAPair) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says(9s, "11 22 33 44");
    RunDownload(Family1Image());
    ExpectFailureAfter(10s, SentAt(LastFrameBeforeFinish()) + 9s);
}

TEST_F(Silence, OverlookedByAStalledMachineCountsAsReached) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00");
    Loop.At(5s, [this] { Loop.Stall(1min); });
    RunDownload(Family1Image());
    EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
    EXPECT_LT(FailedAt, 66s);
}

TEST_F(Silence, OfAStalledMachineIsForgottenWhenTheAnswerWasThere) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.Hears("FF AA 03 00 00").Says(6s, Acknowledge);
    Unit.Hears("FF AA 03 01 00").Says(500ms, Acknowledge);
    Unit.AcknowledgesBlocks(2, Blocks - 2);
    Loop.At(5s, [this] { Loop.Stall(1min); });
    RunDownload(Family1Image());
    EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
}

TEST_F(Silence, OfAPulledOutAdapterEndsTheRunLikeAnyOther) {
    AgreesOn(ProgramMode, Speed57600);
    Unit.AcknowledgesBlocks(0, 1);
    Unit.Hears("FF AA 03 01 00").Says(30s, Acknowledge);
    Loop.At(1s, [this] { Unit.PullOut(); });
    FinishArrives = false;
    RunDownload(Family1Image());
    ExpectFailureAfter(10s, SentAt(Unit.Sent().size() - 1));
}

}  // namespace burnwick::test
