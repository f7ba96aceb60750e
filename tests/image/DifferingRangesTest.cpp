#include "image/DifferingRanges.h"

#include <gmock/gmock.h>

#include <string>

namespace burnwick::test {

using modBinFileInfo::DifferingRanges;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(DifferingRanges, AreNoneWhereAllIsAlike) {
    DifferingRanges ranges;
    ranges.Take(0, "alike", "alike");
    ranges.Take(5, "", "");
    EXPECT_THAT(ranges.Kept(), IsEmpty());
    EXPECT_FALSE(ranges.HasMore());
}

TEST(DifferingRanges, HaveOffsetLengthAndBytesOfBoth) {
    DifferingRanges ranges;
    ranges.Take(0x100, "..ab.c", "..AB.C");
    ASSERT_THAT(ranges.Kept(), SizeIs(2));
    EXPECT_EQ(ranges.Kept()[0].Offset, 0x102U);
    EXPECT_EQ(ranges.Kept()[0].Length, 2U);
    EXPECT_EQ(ranges.Kept()[0].Bytes1, "ab");
    EXPECT_EQ(ranges.Kept()[0].Bytes2, "AB");
    EXPECT_EQ(ranges.Kept()[1].Offset, 0x105U);
    EXPECT_EQ(ranges.Kept()[1].Length, 1U);
}

TEST(DifferingRanges, GoOnInTheBytesThatFollow) {
    DifferingRanges ranges;
    ranges.Take(0, ".ab", ".AB");
    ranges.Take(3, "cd.", "CD.");
    ASSERT_THAT(ranges.Kept(), SizeIs(1));
    EXPECT_EQ(ranges.Kept()[0].Length, 4U);
    EXPECT_EQ(ranges.Kept()[0].Bytes2, "ABCD");
}

TEST(DifferingRanges, EndWhereBytesAreLeftOut) {
    DifferingRanges ranges;
    ranges.Take(0, "ab", "AB");
    ranges.Take(3, "cd", "CD");
    EXPECT_THAT(ranges.Kept(), SizeIs(2));
}

TEST(DifferingRanges, KeepSixteenBytesOfALongOne) {
    DifferingRanges ranges;
    ranges.Take(0, std::string(10, 'a'), std::string(10, 'A'));
    ranges.Take(10, std::string(90, 'b'), std::string(90, 'B'));
    ASSERT_THAT(ranges.Kept(), SizeIs(1));
    EXPECT_EQ(ranges.Kept()[0].Length, 100U);
    EXPECT_EQ(ranges.Kept()[0].Bytes1, "aaaaaaaaaabbbbbb");
    EXPECT_EQ(ranges.Kept()[0].Bytes2, "AAAAAAAAAABBBBBB");
}

TEST(DifferingRanges, AreKeptUpToAThousand) {
    DifferingRanges ranges;
    for (std::uint64_t i = 0; i < 1000; ++i) {
        ranges.Take(2 * i, "a.", "A.");
    }
    EXPECT_THAT(ranges.Kept(), SizeIs(1000));
    EXPECT_FALSE(ranges.HasMore()) << "all are there";
    ranges.Take(2000, "a.a", "A.A");
    EXPECT_THAT(ranges.Kept(), SizeIs(1000));
    EXPECT_TRUE(ranges.HasMore());
}

TEST(DifferingRanges, LetTheThousandthGrowToItsEnd) {
    DifferingRanges ranges;
    for (std::uint64_t i = 0; i < 1000; ++i) {
        ranges.Take(2 * i, "a", "A");
    }
    ranges.Take(1999, "bc..", "BC..");
    EXPECT_EQ(ranges.Kept().back().Length, 3U);
    EXPECT_FALSE(ranges.HasMore());
}

}  // namespace burnwick::test
