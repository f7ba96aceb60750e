#include "settings/ChipSize.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace burnwick {
namespace {

TEST(ChipSize, GivesEachSizeItsCaption) {
    EXPECT_EQ(ChipCaption(0), "&1Mbit");
    EXPECT_EQ(ChipCaption(1), "&2Mbit");
    EXPECT_EQ(ChipCaption(2), "&4Mbit");
    EXPECT_EQ(ChipCaption(3), "&8Mbit");
}

TEST(ChipSize, GivesEachSizeItsBlocks) {
    EXPECT_EQ(ChipSizes[0].Blocks, 256) << "not half of the next one";
    EXPECT_EQ(ChipSizes[1].Blocks, 1024);
    EXPECT_EQ(ChipSizes[2].Blocks, 2048);
    EXPECT_EQ(ChipSizes[3].Blocks, 4096);
}

TEST(ChipSize, Is4MbitAsLongAsNothingIsStored) {
    EXPECT_EQ(ChipIndexOf(""), 2U);
}

TEST(ChipSize, IsTheStoredIndex) {
    EXPECT_EQ(ChipIndexOf("0"), 0U);
    EXPECT_EQ(ChipIndexOf("1"), 1U);
    EXPECT_EQ(ChipIndexOf("2"), 2U);
    EXPECT_EQ(ChipIndexOf("3"), 3U);
}

TEST(ChipSize, IsTheNumberWithWhichATextBegins) {
    EXPECT_EQ(ChipIndexOf(" 1x"), 1U);
    EXPECT_EQ(ChipIndexOf("\t3 0"), 3U);
    EXPECT_EQ(ChipIndexOf("0.9"), 0U);
    EXPECT_EQ(ChipIndexOf("0003"), 3U);
}

TEST(ChipSize, Is4MbitForATextWithoutANumber) {
    EXPECT_EQ(ChipIndexOf("   "), 2U);
    EXPECT_EQ(ChipIndexOf("8Mbit"), 2U) << "8 is no index";
    EXPECT_EQ(ChipIndexOf("x1"), 2U);
}

TEST(ChipSize, Is4MbitForANumberThatIsNoIndex) {
    EXPECT_EQ(ChipIndexOf("4"), 2U);
    EXPECT_EQ(ChipIndexOf("-1"), 2U);
    EXPECT_EQ(ChipIndexOf(std::to_string(std::numeric_limits<std::size_t>::max()) + "0"), 2U);
}

}  // namespace
}  // namespace burnwick
