#include "simulator/Unit.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/Host.h"

namespace simulator {
namespace {

using namespace std::chrono_literals;

Bytes Filled(int fill) {
    return Bytes(BlockSize, static_cast<std::byte>(fill));
}

TEST(Unit, AnswersAProbeWithReadyAfterTenMilliseconds) {
    Host host(UnitOfBlocks(4));
    EXPECT_EQ(host.Ask(Probe), Ready);
    EXPECT_EQ(host.Now(), 10ms);
    EXPECT_EQ(host.Journal().Probes, 1);
}

TEST(Unit, AnswersProbesThatPiledUpOnce) {
    Host host(UnitOfBlocks(4));
    host.Say(Probe + Probe + Probe);
    EXPECT_EQ(host.HearAll(), Ready);
}

TEST(Unit, PassesOverAProbeWithTheComplementAsItsCheck) {
    Host host(UnitOfBlocks(4));
    EXPECT_EQ(host.Ask(BytesOf(0xFF, 0xAA, 0x00, 0xFF)), Nothing);
    EXPECT_EQ(host.Journal().BadMessages, 1);
}

TEST(Unit, AcknowledgesAModeMessageWhenNoSpeedRequestFollows) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    const auto asked = host.Now();
    EXPECT_EQ(host.Ask(ProgramMode), Acknowledge);
    EXPECT_EQ(host.Now() - asked, 50ms);
    EXPECT_EQ(host.Hear(), Ready);
    EXPECT_EQ(host.Hear(), Nothing);
    EXPECT_EQ(host.Other().Baud(), 9600U);
}

TEST(Unit, ChangesSpeedAfterTheAcknowledgementHasGone) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode + Speed115200), Acknowledge);
    EXPECT_EQ(host.Other().Baud(), 9600U);
    host.Baud = 115200;
    EXPECT_EQ(host.Hear(), Ready);
    EXPECT_EQ(host.Other().Baud(), 115200U);
    EXPECT_EQ(host.Hear(), Nothing);
}

TEST(Unit, AnswersASpeedThatIsTooFastWithReadyAndTakesASlowerOne) {
    auto options = UnitOfBlocks(4);
    options.MaxBaud = 57600;
    Host host(options);
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(ProgramMode + Speed115200), Ready);
    EXPECT_EQ(host.Other().Baud(), 9600U);
    EXPECT_EQ(host.Ask(Speed57600), Acknowledge);
    host.Baud = 57600;
    EXPECT_EQ(host.Hear(), Ready);
}

TEST(Unit, TakesASpeedRequestWithoutAModeForABadMessage) {
    Host host(UnitOfBlocks(4));
    EXPECT_EQ(host.Ask(Speed57600), Nothing);
    EXPECT_EQ(host.Journal().BadMessages, 1);
}

TEST(Unit, TakesASecondModeMessageForABadMessage) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    EXPECT_EQ(host.Ask(UploadMode), Nothing);
    EXPECT_EQ(host.Journal().BadMessages, 1);
}

TEST(Unit, ShowsItsIdentityAtTheThirdByteOfOneChunkThatEndsInReady) {
    auto options = UnitOfBlocks(4);
    options.Ident = '{';
    Host host(options);
    host.SetUp(ProgramMode);
    const auto answer = host.Ask(Identify);
    ASSERT_EQ(answer.size(), 8U);
    EXPECT_EQ(answer[2], std::byte{'{'});
    EXPECT_NE(answer[0], std::byte{0xFF});
    EXPECT_EQ(Bytes(answer.begin() + 4, answer.end()), Ready);
    EXPECT_EQ(host.Journal().IdentifyRequests, 1);
}

TEST(Unit, WithoutAnIdentityAnswersTheIdentifyRequestWithPlainReady) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    EXPECT_EQ(host.Ask(Identify), Ready);
}

TEST(Unit, MayBeAskedForItsIdentityBeforeAndAfterTheSpeedChange) {
    auto options = UnitOfBlocks(4);
    options.Ident = 'I';
    options.MaxBaud = 57600;
    Host host(options);
    host.Ask(Probe);
    host.Ask(ProgramMode + Speed115200);
    EXPECT_EQ(host.Ask(Identify).at(2), std::byte{'I'});
    EXPECT_EQ(host.Ask(Speed57600), Acknowledge);
    host.Baud = 57600;
    EXPECT_EQ(host.Hear(), Ready);
    EXPECT_EQ(host.Ask(Identify).at(2), std::byte{'I'});
}

TEST(Unit, StoresTheBlocksOfADownload) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    EXPECT_EQ(host.Ask(BlockWithData(0, 0x11)), Acknowledge);
    EXPECT_EQ(host.Ask(BlockWithData(1, 0x22)), Acknowledge);
    EXPECT_EQ(StoredBlock(host.Other(), 0), Filled(0x11));
    EXPECT_EQ(StoredBlock(host.Other(), 1), Filled(0x22));
    EXPECT_EQ(host.Journal().BlocksStored, 2);
    EXPECT_EQ(host.Journal().BadMessages, 0);
}

TEST(Unit, ErasesTheChipBeforeItAcknowledgesTheFirstBlock) {
    auto options = UnitOfBlocks(4);
    options.EraseTime = 3s;
    Host host(options);
    host.SetUp(ProgramMode);
    const auto asked = host.Now();
    EXPECT_EQ(host.Ask(BlockWithData(0, 0x11)), Acknowledge);
    EXPECT_EQ(host.Now() - asked, 3s);
    EXPECT_EQ(StoredBlock(host.Other(), 3), Filled(0xFF));
}

TEST(Unit, GivesOutTheBlocksOfAnUpload) {
    Host host(UnitOfBlocks(4));
    host.SetUp(UploadMode);
    EXPECT_EQ(host.Ask(BlockRequest(0)), Acknowledge + Filled(0));
    EXPECT_EQ(host.Ask(BlockRequest(1)), Acknowledge + Filled(1));
    EXPECT_EQ(host.Journal().BlocksSent, 2);
}

TEST(Unit, CarriesTheBlockNumberIntoItsHighByte) {
    Host host(UnitOfBlocks(258));
    host.SetUp(UploadMode);
    for (unsigned block = 0; block < 257; ++block) {
        ASSERT_EQ(host.Ask(BlockRequest(block)).size(), 260U) << block;
    }
    EXPECT_EQ(host.Ask(BlockRequest(257)), Acknowledge + Filled(257 & 0xFF));
}

TEST(Unit, RefusesABlockWithAWrongCheckAndTakesItWhenItComesRight) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    auto spoilt = BlockWithData(0, 0x11);
    spoilt[100] ^= std::byte{1};
    EXPECT_EQ(host.Ask(spoilt), Negative7);
    EXPECT_EQ(host.Journal().BadMessages, 1);
    EXPECT_EQ(host.Journal().BlocksStored, 0);
    EXPECT_EQ(StoredBlock(host.Other(), 1), Filled(1));
    EXPECT_EQ(host.Ask(BlockWithData(0, 0x11)), Acknowledge);
}

TEST(Unit, RefusesABlockOutOfOrder) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    host.Ask(BlockWithData(0, 0x11));
    EXPECT_EQ(host.Ask(BlockWithData(2, 0x22)), Negative8);
    EXPECT_EQ(host.Ask(BlockWithData(0, 0x22)), Negative8);
    EXPECT_EQ(host.Journal().BadMessages, 2);
    EXPECT_EQ(StoredBlock(host.Other(), 0), Filled(0x11));
}

TEST(Unit, RefusesABlockBeyondTheChip) {
    for (const auto& mode : {ProgramMode, UploadMode}) {
        Host host(UnitOfBlocks(1));
        host.SetUp(mode);
        const auto block = [&mode](unsigned number) {
            return mode == ProgramMode ? BlockWithData(number, 1) : BlockRequest(number);
        };
        host.Ask(block(0));
        EXPECT_EQ(host.Ask(block(1)), Negative8);
    }
}

TEST(Unit, TakesABlockBeforeAnyModeForABadMessage) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    EXPECT_EQ(host.Ask(BlockRequest(0)), Nothing);
    EXPECT_EQ(host.Journal().BadMessages, 1);
    EXPECT_EQ(host.Ask(Probe), Ready);
}

TEST(Unit, RefusesABlockBeforeItHasSaidReady) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    host.Say(UploadMode);
    EXPECT_EQ(host.Ask(BlockRequest(0)), Negative8);
}

TEST(Unit, StartsAnewAfterAFinishMessage) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    host.Ask(ProgramMode + Speed57600);
    host.Baud = 57600;
    host.Hear();
    host.Say(Finish);
    EXPECT_EQ(host.Journal().FinishMessages, 1);
    EXPECT_EQ(host.Journal().Restarts, 1);
    EXPECT_EQ(host.Other().Baud(), 9600U);
    host.Baud = 9600;
    EXPECT_EQ(host.Ask(Probe), Ready);
    EXPECT_EQ(host.Ask(UploadMode), Acknowledge);
}

TEST(Unit, LeavesUnsaidWhatAFinishMessageOvertakes) {
    Host host(UnitOfBlocks(4));
    host.Ask(Probe);
    host.Say(ProgramMode + Finish);
    EXPECT_EQ(host.Hear(), Nothing);
}

TEST(Unit, AnnouncedPassesOverProbesAndSaysReadyOnceAfterFlashRequests) {
    auto options = UnitOfBlocks(4);
    options.Announce = true;
    Host host(options);
    EXPECT_EQ(host.Ask(Probe), Nothing);
    const auto asked = host.Now();
    const auto acknowledgement = BytesOf(0x00, 0x10, 0x00, 0x00, 0x00, 0x01);
    EXPECT_EQ(host.Ask(FlashRequest), acknowledgement);
    EXPECT_EQ(host.Ask(FlashRequest), acknowledgement);
    EXPECT_EQ(host.Hear(), Ready);
    EXPECT_EQ(host.Now() - asked, 1200ms);
    EXPECT_EQ(host.Hear(), Nothing);
    EXPECT_EQ(host.Journal().FlashRequests, 2);
}

TEST(Unit, NotAnnouncedDoesNotKnowTheFlashRequest) {
    Host host(UnitOfBlocks(4));
    EXPECT_EQ(host.Ask(FlashRequest), Nothing);
}

TEST(Unit, TakesAMessageThatComesInPieces) {
    Host host(UnitOfBlocks(4));
    for (const auto value : Probe) {
        host.Pause(200ms);
        host.Say(std::span(&value, 1));
    }
    EXPECT_EQ(host.Hear(), Ready);
}

TEST(Unit, ForgetsAMessageThatStopsInTheMiddle) {
    Host host(UnitOfBlocks(4));
    host.SetUp(ProgramMode);
    const auto block = BlockWithData(0, 0x11);
    host.Say(std::span(block).first(100));
    host.Pause(2s);
    EXPECT_EQ(host.Ask(Probe), Ready);
    EXPECT_EQ(host.Journal().BadMessages, 1);
}

TEST(Unit, HearsNothingRightAtAnotherSpeed) {
    Host host(UnitOfBlocks(4));
    host.Baud = 57600;
    EXPECT_EQ(host.Ask(Probe), Nothing);
    host.Say(Finish);
    EXPECT_EQ(host.Journal().Probes, 0);
    EXPECT_EQ(host.Journal().FinishMessages, 0);
}

TEST(Unit, SendsNothingRightToAHostAtAnotherSpeed) {
    Host host(UnitOfBlocks(4));
    host.Say(Probe);
    host.Baud = 57600;
    const auto answer = host.Hear();
    EXPECT_EQ(answer.size(), Ready.size());
    EXPECT_EQ(std::count(answer.begin(), answer.end(), std::byte{0xFF}), 0);
}

TEST(Wire, GarblesEveryByteIntoAnotherThatStartsNoHeader) {
    for (unsigned value = 0; value <= 0xFFU; ++value) {
        const auto garbled = Garbled(static_cast<std::byte>(value));
        EXPECT_NE(garbled, static_cast<std::byte>(value));
        EXPECT_NE(garbled, std::byte{0xFF});
        EXPECT_NE(garbled, std::byte{0x00});
    }
}

}  // namespace
}  // namespace simulator
