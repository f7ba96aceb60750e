#include "simulator/Parser.h"

#include <gtest/gtest.h>

#include "simulator/Host.h"

namespace simulator {
namespace {

std::vector<MessageKind> KindsIn(const Bytes& bytes, BlockForm form = BlockForm::Unknown) {
    Parser parser;
    parser.SetBlockForm(form);
    std::vector<MessageKind> kinds;
    for (const auto value : bytes) {
        parser.Put(value);
        while (const auto message = parser.Next()) {
            kinds.push_back(message->Kind);
        }
    }
    return kinds;
}

using Kinds = std::vector<MessageKind>;

TEST(Parser, KnowsEveryCommand) {
    const auto all =
        Probe + Speed57600 + Finish + UploadMode + ProgramMode + Identify + Speed115200 + FlashRequest;
    EXPECT_EQ(KindsIn(all), (Kinds{MessageKind::Probe, MessageKind::Speed57600, MessageKind::Finish,
                                   MessageKind::UploadMode, MessageKind::ProgramMode, MessageKind::Identify,
                                   MessageKind::Speed115200, MessageKind::FlashRequest}));
}

TEST(Parser, FindsAMessageBehindNoise) {
    EXPECT_EQ(KindsIn(BytesOf(0x00, 0xAA, 0xFF, 0x12, 0xFF) + Probe), Kinds{MessageKind::Probe});
}

TEST(Parser, FindsAMessageBehindOneThatBrokeOff) {
    EXPECT_EQ(KindsIn(BytesOf(0xFF, 0xAA) + Finish), (Kinds{MessageKind::Bad, MessageKind::Finish}));
    EXPECT_EQ(KindsIn(BytesOf(0xFF, 0xAA, 0x0A) + Finish), (Kinds{MessageKind::Bad, MessageKind::Finish}));
}

TEST(Parser, FindsAMessageBehindAFlashRequestThatBrokeOff) {
    const Bytes begun(FlashRequest.begin(), FlashRequest.begin() + 10);
    EXPECT_EQ(KindsIn(begun + Probe), (Kinds{MessageKind::Bad, MessageKind::Probe}));
}

TEST(Parser, TakesAWrongCheckForABadMessage) {
    for (auto command : {Speed57600, Finish, UploadMode, ProgramMode, Identify, Speed115200}) {
        command[3] ^= std::byte{0x01};
        EXPECT_EQ(KindsIn(command), Kinds{MessageKind::Bad});
    }
}

TEST(Parser, ReadsNumberAndDataOfABlock) {
    Parser parser;
    parser.SetBlockForm(BlockForm::WithData);
    for (const auto value : BlockWithData(0x0102, 0xFF)) {
        ASSERT_FALSE(parser.Next());
        parser.Put(value);
    }
    const auto message = parser.Next();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Kind, MessageKind::Block);
    EXPECT_EQ(message->Block, 0x0102U);
    EXPECT_EQ(message->Data, Bytes(BlockSize, std::byte{0xFF}));
}

TEST(Parser, DoesNotLookForMessagesWithinABlock) {
    auto block = BytesOf(0xFF, 0xAA, 0x03, 0x00, 0x00) + Finish;
    block.resize(5 + BlockSize);
    EXPECT_EQ(KindsIn(WithCheck(block), BlockForm::WithData), Kinds{MessageKind::Block});
    EXPECT_EQ(KindsIn(WithCheck(block + Nothing) + Finish, BlockForm::WithData),
              (Kinds{MessageKind::Block, MessageKind::Finish}));
    auto spoilt = WithCheck(block);
    spoilt.back() ^= std::byte{0x01};
    EXPECT_EQ(KindsIn(spoilt, BlockForm::WithData), Kinds{MessageKind::BadBlock});
}

TEST(Parser, ReadsABlockRequest) {
    EXPECT_EQ(KindsIn(BlockRequest(7), BlockForm::Request), Kinds{MessageKind::Block});
    auto spoilt = BlockRequest(7);
    spoilt[3] = std::byte{8};
    EXPECT_EQ(KindsIn(spoilt, BlockForm::Request), Kinds{MessageKind::BadBlock});
}

}  // namespace
}  // namespace simulator
