#include "engine/PercentBarText.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(BarPercent, IsTheShareOfTheMaximum) {
    EXPECT_EQ(BarPercent(0, 100), 0);
    EXPECT_EQ(BarPercent(50, 100), 50);
    EXPECT_EQ(BarPercent(100, 100), 100);
    EXPECT_EQ(BarPercent(1024, 2048), 50);
}

TEST(BarPercent, RoundsAFractionUp) {
    EXPECT_EQ(BarPercent(1, 3), 34);
    EXPECT_EQ(BarPercent(2, 3), 67);
    EXPECT_EQ(BarPercent(1, 32'767), 1);
    EXPECT_EQ(BarPercent(32'766, 32'767), 100);
}

TEST(BarPercent, HoldsAValueAboveTheMaximumAt100) {
    EXPECT_EQ(BarPercent(101, 100), 100);
    EXPECT_EQ(BarPercent(32'767, 1), 100);
}

TEST(BarPercent, IsNeverBelow0) {
    EXPECT_EQ(BarPercent(-1, 100), 0);
    EXPECT_EQ(BarPercent(-32'768, 1), 0);
}

TEST(BarPercent, Is0WhereThereIsNothingToReach) {
    EXPECT_EQ(BarPercent(0, 0), 0);
    EXPECT_EQ(BarPercent(50, 0), 0);
    EXPECT_EQ(BarPercent(50, -100), 0);
}

TEST(BarText, IsThePercentageForACaptionWithBarInIt) {
    EXPECT_EQ(BarText("PercentBar1", 0), "0%");
    EXPECT_EQ(BarText("PercentBar1", 34), "34%");
    EXPECT_EQ(BarText("Bar", 100), "100%");
}

TEST(BarText, IsAnyOtherCaptionAsItStands) {
    EXPECT_EQ(BarText("Sending", 34), "Sending");
    EXPECT_EQ(BarText("bar", 34), "bar") << "in another case it is another word";
    EXPECT_EQ(BarText("", 34), "");
}

}  // namespace
}  // namespace burnwick
