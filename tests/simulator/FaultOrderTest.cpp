#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/Unit.h"

namespace simulator {
namespace {

TEST(FaultOrder, ReadsANameAlone) {
    const auto order = ParseFaultOrder("too-late");
    ASSERT_TRUE(order);
    EXPECT_EQ(order->Kind, Fault::TooLate);
    EXPECT_FALSE(order->Block);
}

TEST(FaultOrder, ReadsANameWithABlock) {
    const auto order = ParseFaultOrder("negative-8@65535");
    ASSERT_TRUE(order);
    EXPECT_EQ(order->Kind, Fault::Negative8);
    EXPECT_EQ(order->Block, 65535);
}

TEST(FaultOrder, ReadsEveryNameThatItTells) {
    for (const auto& name : FaultNames()) {
        EXPECT_TRUE(ParseFaultOrder(name)) << name;
        EXPECT_TRUE(ParseFaultOrder(name + "@0")) << name;
    }
    EXPECT_THAT(FaultNames(),
                testing::UnorderedElementsAre("negative-7", "negative-8", "masked", "no-answer", "dead",
                                              "cut-short", "drop", "flip", "flip-data", "repeat", "noise",
                                              "pieces", "late", "too-late", "ready-for-ack", "power-cut"));
}

TEST(FaultOrder, RefusesWhatItCannotRead) {
    for (const auto* text :
         {"", "@", "@3", "unknown", "Drop", "drop ", " drop", "drop@", "drop@-1", "drop@+1", "drop@ 1",
          "drop@1 ", "drop@x", "drop@1x", "drop@65536", "drop@99999999999", "drop@1@2", "drop,flip"}) {
        EXPECT_FALSE(ParseFaultOrder(text)) << text;
    }
}

}  // namespace
}  // namespace simulator
