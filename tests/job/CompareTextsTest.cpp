#include "job/CompareTexts.h"

#include <gmock/gmock.h>

#include "job/RefusedComparison.h"

namespace burnwick::test {

namespace fs = std::filesystem;

using modBinFileInfo::DifferingRange;
using modBinFileInfo::DifferingRanges;
using ::testing::ElementsAre;

TEST_F(RefusedComparison, IsNotThatOfTwoFiles) {
    EXPECT_FALSE(Refuse(Here, Other));
}

TEST_F(RefusedComparison, LacksFile1) {
    ExpectRefusal(Refuse("", Other), "File 1", "Select a file for File 1.", 1);
}

TEST_F(RefusedComparison, LacksFile2) {
    ExpectRefusal(Refuse(Here, ""), "File 2", "Select a file for File 2.", 2);
}

TEST_F(RefusedComparison, HasNoFile1) {
    ExpectRefusal(Refuse(Folder / "gone.bin", Other), "File 1", "File 1 does not exist.", 1);
}

TEST_F(RefusedComparison, HasNoFile2) {
    ExpectRefusal(Refuse(Here, Folder / "gone.bin"), "File 2", "File 2 does not exist.", 2);
}

TEST_F(RefusedComparison, HasOneFileTwice) {
    ExpectRefusal(Refuse(Here, Here), "Same File Name", "File 1 and File 2 have the same filename.", 0);
}

TEST_F(RefusedComparison, HasOneFileTwiceInAnotherCase) {
    const std::string upper = Folder.Write("HERE.BIN", AnyBytes(10));
    ExpectRefusal(Refuse(Here, upper), "Same File Name", "File 1 and File 2 have the same filename.", 0);
}

TEST_F(RefusedComparison, LacksAFileBeforeTheOtherIsLookedFor) {
    ExpectRefusal(Refuse("", ""), "File 1", "Select a file for File 1.", 1);
    ExpectRefusal(Refuse(Folder / "gone.bin", ""), "File 2", "Select a file for File 2.", 2);
}

TEST_F(RefusedComparison, HasNoFileBeforeItsNameIsCompared) {
    ExpectRefusal(Refuse(Folder / "gone.bin", Folder / "gone.bin"), "File 1", "File 1 does not exist.", 1);
}

TEST_F(RefusedComparison, TakesNoFolderForAFile) {
    ExpectRefusal(Refuse(Folder.Path().string(), Other), "File 1", "File 1 does not exist.", 1);
    ExpectRefusal(Refuse(Here, Folder.Path().string()), "File 2", "File 2 does not exist.", 2);
}

TEST_F(RefusedComparison, FindsNoFileOfAnImpossibleName) {
    ExpectRefusal(Refuse(std::string(4000, 'x'), Other), "File 1", "File 1 does not exist.", 1);
    ExpectRefusal(Refuse(Here, Here + "/under"), "File 2", "File 2 does not exist.", 2);
    ExpectRefusal(Refuse("\xFF\n<b>&", Other), "File 1", "File 1 does not exist.", 1);
}

TEST_F(RefusedComparison, FindsAFileThatMayOnlyBeRead) {
    fs::permissions(Here, fs::perms::owner_read);
    EXPECT_FALSE(Refuse(Here, Other));
    EXPECT_FALSE(Refuse(Here, Folder.Write(".hidden.bin", AnyBytes(10))));
}

TEST(CompareStatus, TellsIdenticalFiles) {
    EXPECT_EQ(CompareStatus("", 0), "Status: File 1 and File 2 are identical.");
}

TEST(CompareStatus, TellsOneByteInTheSingular) {
    EXPECT_EQ(CompareStatus("", 1), "Status: 1 byte is different.");
}

TEST(CompareStatus, TellsManyBytesWithoutSeparators) {
    EXPECT_EQ(CompareStatus("", 1234), "Status: 1234 bytes are different.");
}

TEST(CompareStatus, EndsAnErrorWithAPeriod) {
    EXPECT_EQ(CompareStatus("Error: File size mismatched", 0), "Status: Error: File size mismatched.");
}

TEST(RangeTexts, TellWhereHowManyAndWhich) {
    EXPECT_THAT(RangeTexts({0xFEFF, 3, {"\x00\x0A\xFF", 3}, "abc"}),
                ElementsAre("0000FEFF", "3", "00 0A FF", "61 62 63"));
    EXPECT_THAT(RangeTexts({0x7FFFFFFE, 1, "\x80", "\x7F"}), ElementsAre("7FFFFFFE", "1", "80", "7F"));
}

TEST(RangeTexts, TellThatTheyDoNotShowAllBytes) {
    EXPECT_EQ(RangeTexts({0, 16, std::string(16, 'a'), std::string(16, 'b')})[2],
              "61 61 61 61 61 61 61 61 61 61 61 61 61 61 61 61");
    EXPECT_EQ(RangeTexts({0, 1234, std::string(16, 'a'), std::string(16, 'b')})[3],
              "62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 62 \u2026");
}

TEST(RangeTexts, StandInTabbedLines) {
    EXPECT_EQ(TabbedLine(RangeHeadings()), "Offset\tLength\tFile 1\tFile 2\n");
    EXPECT_EQ(TabbedLine({"0000FEFF", "3", "00 0A FF", "61 62 63"}), "0000FEFF\t3\t00 0A FF\t61 62 63\n");
}

TEST(RangesCaption, CountsTheRanges) {
    DifferingRanges ranges;
    EXPECT_EQ(RangesCaption(ranges), "");
    ranges.Take(0, "a", "b");
    EXPECT_EQ(RangesCaption(ranges), "1 range.");
    ranges.Take(2, "a", "b");
    EXPECT_EQ(RangesCaption(ranges), "2 ranges.");
}

TEST(RangesCaption, TellsThatThereAreMore) {
    DifferingRanges ranges;
    for (std::uint64_t i = 0; i <= DifferingRanges::MostKept; ++i) {
        ranges.Take(2 * i, "a", "b");
    }
    EXPECT_EQ(RangesCaption(ranges), "The first 1000 ranges. There are more.");
}

}  // namespace burnwick::test
