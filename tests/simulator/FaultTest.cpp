#include <gtest/gtest.h>

#include "simulator/Host.h"
#include "simulator/Unit.h"

namespace simulator {
namespace {

using namespace std::chrono_literals;

UnitOptions With(Fault fault, std::optional<int> block) {
    auto options = UnitOfBlocks(4);
    options.Faults = {{fault, block}};
    options.EraseTime = 0ms;
    return options;
}

// A download that has come to block 1, at which the fault waits.
Host Downloading(Fault fault) {
    Host host(With(fault, 1));
    host.SetUp(ProgramMode);
    EXPECT_EQ(host.Ask(BlockWithData(0, 0x11)), Acknowledge);
    return host;
}

// An upload that has come to block 1, at which the fault waits.
Host Uploading(Fault fault) {
    Host host(With(fault, 1));
    host.SetUp(UploadMode);
    EXPECT_EQ(host.Ask(BlockRequest(0)).size(), 260U);
    return host;
}

const Bytes Block1 = BlockWithData(1, 0x22);
const Bytes WholeAnswer = Acknowledge + Bytes(BlockSize, std::byte{1});

bool Block1Stored(const Host& host) {
    return StoredBlock(host.Other(), 1) == Bytes(BlockSize, std::byte{0x22});
}

TEST(Fault, NegativeAnswersStoreNothing) {
    auto seven = Downloading(Fault::Negative7);
    EXPECT_EQ(seven.Ask(Block1), Negative7);
    EXPECT_FALSE(Block1Stored(seven));
    auto eight = Downloading(Fault::Negative8);
    EXPECT_EQ(eight.Ask(Block1), Negative8);
    EXPECT_FALSE(Block1Stored(eight));
    EXPECT_EQ(eight.Journal().BlocksStored, 1);
}

TEST(Fault, StrikesOnce) {
    auto host = Downloading(Fault::Negative7);
    EXPECT_EQ(host.Ask(Block1), Negative7);
    EXPECT_EQ(host.Ask(Block1), Acknowledge);
    EXPECT_TRUE(Block1Stored(host));
}

TEST(Fault, MaskedRefusesTheBlockButLooksLikeAnAcknowledgement) {
    auto host = Downloading(Fault::Mask7);
    EXPECT_EQ(host.Ask(Block1), Acknowledge);
    EXPECT_FALSE(Block1Stored(host));
    EXPECT_EQ(host.Ask(BlockWithData(2, 0x33)), Acknowledge);
}

TEST(Fault, NoAnswerStoresTheBlockAndGoesOn) {
    auto host = Downloading(Fault::NoAnswer);
    EXPECT_EQ(host.Ask(Block1), Nothing);
    EXPECT_TRUE(Block1Stored(host));
    EXPECT_EQ(host.Ask(BlockWithData(2, 0x33)), Acknowledge);
}

TEST(Fault, DeadAnswersNothingAnyMore) {
    auto host = Downloading(Fault::Dead);
    EXPECT_EQ(host.Ask(Block1), Nothing);
    EXPECT_EQ(host.Ask(Finish), Nothing);
    EXPECT_EQ(host.Ask(Probe), Nothing);
    EXPECT_EQ(host.Journal().FinishMessages, 0);
}

TEST(Fault, CutShortStopsAfterTheThirdByteOrHalfOfTheData) {
    EXPECT_EQ(Downloading(Fault::CutShort).Ask(Block1), BytesOf(0xFF, 0xAA, 0x06));
    EXPECT_EQ(Uploading(Fault::CutShort).Ask(BlockRequest(1)).size(), 4U + BlockSize / 2);
}

TEST(Fault, DropLosesOneByte) {
    EXPECT_EQ(Downloading(Fault::Drop).Ask(Block1), BytesOf(0xFF, 0xAA, 0x00));
    EXPECT_EQ(Uploading(Fault::Drop).Ask(BlockRequest(1)).size(), WholeAnswer.size() - 1);
}

TEST(Fault, FlipTurnsTheCodeIntoOneThatNobodyKnows) {
    const auto answer = Downloading(Fault::Flip).Ask(Block1);
    EXPECT_EQ(answer, BytesOf(0xFF, 0xAA, 0x16, 0x00));
}

TEST(Fault, FlipDataChangesOneByteOfTheData) {
    auto answer = Uploading(Fault::FlipData).Ask(BlockRequest(1));
    ASSERT_EQ(answer.size(), WholeAnswer.size());
    EXPECT_NE(answer, WholeAnswer);
    answer[132] = WholeAnswer[132];
    EXPECT_EQ(answer, WholeAnswer);
}

TEST(Fault, RepeatSaysTheAnswerTwiceInOnePiece) {
    EXPECT_EQ(Downloading(Fault::Repeat).Ask(Block1), Acknowledge + Acknowledge);
}

TEST(Fault, NoiseComesInOnePieceWithTheAnswer) {
    const auto answer = Downloading(Fault::Noise).Ask(Block1);
    ASSERT_GT(answer.size(), Acknowledge.size());
    EXPECT_EQ(Bytes(answer.end() - 4, answer.end()), Acknowledge);
}

TEST(Fault, PiecesGiveTheWholeAnswerBitByBit) {
    auto host = Uploading(Fault::Pieces);
    const auto asked = host.Now();
    Bytes all;
    host.Say(BlockRequest(1));
    while (all.size() < WholeAnswer.size()) {
        const auto piece = host.Hear();
        ASSERT_GE(piece.size(), 1U);
        ASSERT_LE(piece.size(), 2U);
        all = all + piece;
    }
    EXPECT_EQ(all, WholeAnswer);
    EXPECT_LT(host.Now() - asked, 2s);
}

TEST(Fault, LateAnswersStayInsideTheLimitThatAppliesAndTooLateOnesDoNot) {
    const auto delayOf = [](Fault fault, std::optional<int> lastBlock) {
        auto options = With(fault, 1);
        options.LastBlock = lastBlock;
        options.LastBlockLimit = 3s;
        Host host(options);
        host.SetUp(ProgramMode);
        host.Ask(BlockWithData(0, 0x11));
        const auto asked = host.Now();
        EXPECT_EQ(host.Ask(Block1), Acknowledge);
        return host.Now() - asked;
    };
    EXPECT_GT(delayOf(Fault::Late, std::nullopt), 9s);
    EXPECT_LT(delayOf(Fault::Late, std::nullopt), 9900ms);
    EXPECT_GT(delayOf(Fault::TooLate, std::nullopt), 10100ms);
    EXPECT_GT(delayOf(Fault::Late, 1), 2s);
    EXPECT_LT(delayOf(Fault::Late, 1), 2900ms);
    EXPECT_GT(delayOf(Fault::TooLate, 1), 3100ms);
    EXPECT_LT(delayOf(Fault::TooLate, 1), 4s);
}

TEST(Fault, TheChipsLastBlockIsTheLastWhenNoneIsNamed) {
    auto options = With(Fault::Late, 3);
    options.LastBlockLimit = 60s;
    Host host(options);
    host.SetUp(UploadMode);
    for (unsigned block = 0; block < 3; ++block) {
        host.Ask(BlockRequest(block));
    }
    const auto asked = host.Now();
    host.Ask(BlockRequest(3));
    EXPECT_GT(host.Now() - asked, 59s);
}

TEST(Fault, ReadyForAckSaysReadyAndStoresTheBlock) {
    auto host = Downloading(Fault::ReadyForAck);
    EXPECT_EQ(host.Ask(Block1), Ready);
    EXPECT_TRUE(Block1Stored(host));
}

TEST(Fault, PowerCutLeavesHalfABlockAndAUnitThatStartsAnew) {
    auto host = Downloading(Fault::PowerCut);
    host.Say(Block1);
    host.Say(Finish);
    EXPECT_EQ(host.HearWithin(299ms), Nothing);
    host.Say(Probe);
    EXPECT_EQ(host.Hear(), Nothing);
    const auto half = BlockSize / 2;
    EXPECT_EQ(StoredBlock(host.Other(), 0), Bytes(BlockSize, std::byte{0x11}));
    EXPECT_EQ(StoredBlock(host.Other(), 1), Bytes(half, std::byte{0x22}) + Bytes(half, std::byte{0xFF}));
    EXPECT_EQ(host.Journal().FinishMessages, 0);
    EXPECT_EQ(host.Journal().Restarts, 1);
    EXPECT_EQ(host.Ask(Probe), Ready);
}

TEST(Fault, LeavesTheAnswerToABadBlockAlone) {
    auto host = Downloading(Fault::NoAnswer);
    auto spoilt = Block1;
    spoilt.back() ^= std::byte{1};
    EXPECT_EQ(host.Ask(spoilt), Negative7);
}

TEST(SetUpFault, RefusesTheSpeedAndStays) {
    Host host(With(Fault::Negative7, std::nullopt));
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode + Speed57600), Negative7);
    EXPECT_EQ(host.Hear(), Nothing);
    EXPECT_EQ(host.Other().Baud(), 9600U);
}

TEST(SetUpFault, StrikesTheModeMessageWhenNoSpeedIsAskedFor) {
    Host host(With(Fault::Negative8, std::nullopt));
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode), Negative8);
    EXPECT_EQ(host.Hear(), Nothing);
}

TEST(SetUpFault, LosesTheAcknowledgementButChangesSpeed) {
    Host host(With(Fault::NoAnswer, std::nullopt));
    host.Ask(Probe);
    host.Say(ProgramMode + Speed57600);
    host.Baud = 57600;
    EXPECT_EQ(host.Hear(), Ready);
}

TEST(SetUpFault, ReadyForAckStaysAtTheOldSpeedUntilAskedAgain) {
    Host host(With(Fault::ReadyForAck, std::nullopt));
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode + Speed115200), Ready);
    EXPECT_EQ(host.Hear(), Nothing);
    EXPECT_EQ(host.Other().Baud(), 9600U);
    EXPECT_EQ(host.Ask(Speed57600), Acknowledge);
}

TEST(SetUpFault, LateAndTooLateMindTheTwoSecondsOfTheSetUp) {
    const auto delayOf = [](Fault fault, const Bytes& message) {
        Host host(With(fault, std::nullopt));
        host.Ask(Probe);
        const auto asked = host.Now();
        EXPECT_EQ(host.Ask(message), Acknowledge);
        return host.Now() - asked;
    };
    for (const auto& message : {ProgramMode, ProgramMode + Speed57600}) {
        EXPECT_GT(delayOf(Fault::Late, message), 1500ms);
        EXPECT_LT(delayOf(Fault::Late, message), 1900ms);
        EXPECT_GT(delayOf(Fault::TooLate, message), 2100ms);
    }
}

TEST(SetUpFault, PowerCutAndDeathSilenceTheSetUp) {
    for (const auto fault : {Fault::Dead, Fault::PowerCut}) {
        Host host(With(fault, std::nullopt));
        host.Ask(Probe);
        EXPECT_EQ(host.Ask(ProgramMode + Speed57600), Nothing);
        EXPECT_EQ(host.Ask(Probe), fault == Fault::Dead ? Nothing : Ready);
    }
}

TEST(SetUpFault, TheSecondOfTwoStrikesTheNextAnswer) {
    auto options = With(Fault::ReadyForAck, std::nullopt);
    options.Faults.push_back({Fault::Negative7, std::nullopt});
    Host host(options);
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode + Speed115200), Ready);
    EXPECT_EQ(host.Ask(Speed57600), Negative7);
}

}  // namespace
}  // namespace simulator
