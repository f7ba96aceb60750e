#include "support/LinkTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::Contains;

}  // namespace

// What a download makes of the answers to its blocks. The second block is the one in question.
class Receive : public LinkTest {
protected:
    void SetUp() override {
        AgreesOn(ProgramMode, Speed57600);
        Unit.AcknowledgesBlocks(0, 1);
    }

    void RestGoesWell() {
        Unit.AcknowledgesBlocks(2, 254);
        RunDownload(AnyBytes(65'536));
        EXPECT_THAT(Events.Messages, Contains("Programming was completed successfully."));
    }

    void RunFails() {
        RunDownload(AnyBytes(65'536));
        EXPECT_EQ(Events.Messages.back(), "Transmitting error.");
    }
};

TEST_F(Receive, DropsAChunkWithoutAPairAndWaitsOn) {
    Unit.Hears("FF AA 03 01 00").Says("11 22 33 44").Says(1s, Acknowledge);
    RestGoesWell();
}

TEST_F(Receive, DropsAChunkThatEndsWithThePair) {
    Unit.Hears("FF AA 03 01 00").Says("11 22 FF AA").Says(1s, Acknowledge);
    RestGoesWell();
}

TEST_F(Receive, FindsThePairBehindNoise) {
    Unit.Hears("FF AA 03 01 00").Says("00 FF 13 FF AA 06 00");
    RestGoesWell();
}

TEST_F(Receive, WaitsForFourBytes) {
    Unit.Hears("FF AA 03 01 00").Says("FF").Says(300ms, "AA").Says(300ms, "06").Says(300ms, "00");
    RestGoesWell();
}

TEST_F(Receive, IgnoresAnyOtherCode) {
    Unit.Hears("FF AA 03 01 00")
        .Says("FF AA 05 00")
        .Says(1s, "FF AA 00 00")
        .Says(1s, "FF AA 09 00")
        .Says(1s, Acknowledge);
    RestGoesWell();
}

TEST_F(Receive, GoesByTheFirstPairOnly) {
    Unit.Hears("FF AA 03 01 00").Says("FF AA 06 00 FF AA 07 00");
    RestGoesWell();
}

TEST_F(Receive, FailsOnANegativeAnswerBehindNoise) {
    Unit.Hears("FF AA 03 01 00").Says("12 34 FF AA 07 00");
    RunFails();
}

TEST_F(Receive, TakesAnAnswerAtOnceWhileBlocksMove) {
    Unit.Hears("FF AA 03 01 00").Says(Acknowledge);
    RestGoesWell();
    // Nothing between an answer and the next block: 255 blocks, each answered after the usual delay.
    const auto first = Unit.Sent()[Unit.Sent().size() - 257].At;
    EXPECT_EQ(Unit.Sent()[Unit.Sent().size() - 2].At - first, 255 * Dialogue::UsualDelay);
}

TEST_F(Receive, FindsTheTransmitCountAtZeroAfterEachMessage) {
    Unit.Hears("FF AA 03 01 00").Says(Acknowledge);
    std::size_t counted = 0;
    Flash.Progress = [&](int /*block*/, int /*total*/) { counted += Port.OutBufferCount(); };
    RestGoesWell();
    EXPECT_EQ(counted, 0U);
}

TEST_F(Receive, WritesEachMessageWithOneCall) {
    Unit.Hears("FF AA 03 01 00").Says(Acknowledge);
    RestGoesWell();
    EXPECT_EQ(Unit.Sent().size(), 3U + 256U + 1U);
}

}  // namespace burnwick::test
