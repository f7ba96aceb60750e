#include "engine/FlashMessages.h"

#include <gmock/gmock.h>

#include "support/Hex.h"

namespace burnwick::test {

namespace {

std::string Command(MessageKind kind) {
    return ToHex(CommandMessage(kind));
}

BlockData BlockOf(unsigned char value) {
    BlockData data;
    data.fill(std::byte{value});
    return data;
}

Answer AnswerIn(const char* hex) {
    return FindAnswer(FromHex(hex));
}

}  // namespace

TEST(CommandMessage, ProbeHasItsOwnCheckByte) {
    EXPECT_EQ(Command(MessageKind::Probe), "FF AA 00 61");
}

TEST(CommandMessage, FlashRequestIsTwentyTwoBytes) {
    EXPECT_EQ(Command(MessageKind::VDR_FLASH_REQUEST),
              "FF CC 11 FE 06 00 10 00 00 00 01 00 00 00 00 00 00 00 00 00 00 FF");
}

TEST(CommandMessage, ModesSpeedsIdentifyAndFinishCarryTheComplementOfTheirCode) {
    EXPECT_EQ(Command(MessageKind::UploadMode), "FF AA 09 F6");
    EXPECT_EQ(Command(MessageKind::ProgramMode), "FF AA 0A F5");
    EXPECT_EQ(Command(MessageKind::Speed57600), "FF AA 02 FD");
    EXPECT_EQ(Command(MessageKind::Speed115200), "FF AA 12 ED");
    EXPECT_EQ(Command(MessageKind::Identify), "FF AA 0C F3");
    EXPECT_EQ(Command(MessageKind::Finish), "FF AA 04 FB");
}

TEST(CommandMessage, KindsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(MessageKind::Probe), 11);
    EXPECT_EQ(static_cast<int>(MessageKind::VDR_FLASH_REQUEST), 343);
    EXPECT_EQ(static_cast<int>(MessageKind::UploadMode), 9);
    EXPECT_EQ(static_cast<int>(MessageKind::ProgramMode), 10);
    EXPECT_EQ(static_cast<int>(MessageKind::Speed57600), 2);
    EXPECT_EQ(static_cast<int>(MessageKind::Speed115200), 18);
    EXPECT_EQ(static_cast<int>(MessageKind::Identify), 12);
    EXPECT_EQ(static_cast<int>(MessageKind::Block), 3);
    EXPECT_EQ(static_cast<int>(MessageKind::Finish), 4);
}

TEST(CommandMessage, IsEmptyForAnyOtherKind) {
    for (const int kind : {-1, 0, 1, 3, 5, 6, 7, 8, 13, 17, 19, 342, 344}) {
        EXPECT_THAT(CommandMessage(static_cast<MessageKind>(kind)), ::testing::IsEmpty()) << kind;
    }
}

TEST(BlockRequestMessage, CarriesTheNumberLowByteFirstAndTheirSum) {
    EXPECT_EQ(ToHex(BlockRequestMessage(0)), "FF AA 03 00 00 03");
    EXPECT_EQ(ToHex(BlockRequestMessage(1)), "FF AA 03 01 00 04");
    EXPECT_EQ(ToHex(BlockRequestMessage(0x12FD)), "FF AA 03 FD 12 12");
}

TEST(BlockRequestMessage, CarriesTheNumberAbove255IntoTheHighByte) {
    EXPECT_EQ(ToHex(BlockRequestMessage(255)), "FF AA 03 FF 00 02");
    EXPECT_EQ(ToHex(BlockRequestMessage(256)), "FF AA 03 00 01 04");
}

TEST(BlockDataMessage, IsHeaderDataAndSumWithoutThePair) {
    BlockData data = BlockOf(0);
    data[0] = std::byte{0x10};
    data[255] = std::byte{0x20};
    const Bytes message = BlockDataMessage(2, data);
    ASSERT_EQ(message.size(), 262U);
    EXPECT_EQ(ToHex({message.begin(), message.begin() + 6}), "FF AA 03 02 00 10");
    EXPECT_EQ(ToHex({message.end() - 2, message.end()}), "20 35");
}

TEST(BlockDataMessage, SumIsTakenModulo256) {
    // 3 + 0 + 1 + 256 times 255
    EXPECT_EQ(BlockDataMessage(0x0100, BlockOf(0xFF)).back(), std::byte{0x04});
}

TEST(BlockDataMessage, CarriesTheNumberAbove255IntoTheHighByte) {
    const Bytes message = BlockDataMessage(256, BlockOf(0));
    EXPECT_EQ(ToHex({message.begin(), message.begin() + 5}), "FF AA 03 00 01");
}

TEST(FindAnswer, TakesTheCodeBehindTheFirstPair) {
    EXPECT_EQ(AnswerIn("FF AA 05 00").Code, AnswerCode::Ready);
    EXPECT_EQ(AnswerIn("12 34 FF AA 06 00 FF AA 07 00").Code, AnswerCode::Acknowledge);
    EXPECT_EQ(AnswerIn("FF FF AA 07").Code, AnswerCode::Negative);
    EXPECT_EQ(AnswerIn("FF AA 08 00").Code, AnswerCode::NegativeToo);
}

TEST(FindAnswer, FindsNothingWithoutThePair) {
    EXPECT_EQ(AnswerIn("AA FF 05 06").Code, AnswerCode::None);
    EXPECT_EQ(AnswerIn("").Code, AnswerCode::None);
}

TEST(FindAnswer, TreatsAPairAtTheVeryEndLikeNoPair) {
    EXPECT_EQ(AnswerIn("00 00 FF AA").Code, AnswerCode::None);
    EXPECT_EQ(AnswerIn("00 00 00 FF").Code, AnswerCode::None);
}

TEST(FindAnswer, TellsWhereAnUploadsDataBegins) {
    EXPECT_EQ(AnswerIn("FF AA 06 00 11").DataAt, 4U);
    EXPECT_EQ(AnswerIn("55 FF AA 06").DataAt, 5U);
}

TEST(FlashRequestAcknowledgement, IsKnownByItsFourFixedBytes) {
    EXPECT_TRUE(IsFlashRequestAcknowledgement(FromHex("00 10 00 00 00 01")));
    EXPECT_TRUE(IsFlashRequestAcknowledgement(FromHex("00 10 77 88 00 01 99")));
    EXPECT_FALSE(IsFlashRequestAcknowledgement(FromHex("00 10 00 00 00")));
    EXPECT_FALSE(IsFlashRequestAcknowledgement(FromHex("01 10 00 00 00 01")));
    EXPECT_FALSE(IsFlashRequestAcknowledgement(FromHex("00 11 00 00 00 01")));
    EXPECT_FALSE(IsFlashRequestAcknowledgement(FromHex("00 10 00 00 01 01")));
    EXPECT_FALSE(IsFlashRequestAcknowledgement(FromHex("00 10 00 00 00 00")));
}

TEST(UnitReplyChar, IsTakenFromIndexTwoOfTheChunk) {
    EXPECT_EQ(FindUnitReplyChar(FromHex("00 00 7B 00")), '{');
    EXPECT_EQ(FindUnitReplyChar(FromHex("00 00 22 00")), '"');
    EXPECT_EQ(FindUnitReplyChar(FromHex("00 00 49 00")), 'I');
}

TEST(UnitReplyChar, IsNoOtherCharacterAndAtNoOtherPlace) {
    EXPECT_EQ(FindUnitReplyChar(FromHex("00 00 05 49")), std::nullopt);
    EXPECT_EQ(FindUnitReplyChar(FromHex("49 49 00 FF AA 49")), std::nullopt);
    EXPECT_EQ(FindUnitReplyChar(FromHex("00 00")), std::nullopt);
}

}  // namespace burnwick::test
