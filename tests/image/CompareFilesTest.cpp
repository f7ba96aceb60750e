#include <gmock/gmock.h>

#include <filesystem>

#include "image/modBinFileInfo.h"
#include "support/ImageBuilder.h"
#include "support/SampleImages.h"
#include "support/TempFolder.h"

namespace burnwick::test {

using modBinFileInfo::CompareImages;
using modBinFileInfo::DifferingRanges;

class FileComparison : public testing::Test {
protected:
    std::string Compare(const Bytes& image1, const Bytes& image2) {
        return CompareImages(Folder.Write("1.bin", image1), Folder.Write("2.bin", image2), Differences);
    }

    TempFolder Folder;
    std::int32_t Differences = 99;
};

TEST_F(FileComparison, OfLikeFilesFindsNothing) {
    EXPECT_EQ(Compare(SampleImage(), SampleImage()), "");
    EXPECT_EQ(Differences, 0);
}

TEST_F(FileComparison, OfAFileWithItselfFindsNothing) {
    const std::string path = Folder.Write("1.bin", SampleType4Image());
    EXPECT_EQ(CompareImages(path, path, Differences), "");
    EXPECT_EQ(Differences, 0);
}

TEST_F(FileComparison, CountsTheDifferences) {
    Bytes other = SampleImage();
    other[4] ^= std::byte{1};
    other.back() ^= std::byte{1};
    EXPECT_EQ(Compare(SampleImage(), other), "");
    EXPECT_EQ(Differences, 2);
}

TEST_F(FileComparison, OfDifferentLengthsIsAnErrorWithoutDifferences) {
    EXPECT_EQ(Compare(SampleImage(), SampleImage(262'144)), "Error: File size mismatched");
    EXPECT_EQ(Differences, 0);
}

TEST_F(FileComparison, OfDifferentTypesIsAnErrorWithoutDifferences) {
    EXPECT_EQ(Compare(SampleType4Image(), SampleAnnouncedImage()), "Error: File type mismatched");
    EXPECT_EQ(Differences, 0);
}

TEST_F(FileComparison, WithAMissingFileIsAnErrorThatNamesIt) {
    const std::string here = Folder.Write("here.bin", SampleImage());
    const std::string missing = Folder / "missing.bin";
    const std::string error = "Error: " + missing + ": No such file or directory";
    EXPECT_EQ(CompareImages(here, missing, Differences), error);
    EXPECT_EQ(Differences, 0);
    EXPECT_EQ(CompareImages(missing, here, Differences), error);
    EXPECT_EQ(CompareImages(missing, Folder / "other.bin", Differences), error);
}

TEST_F(FileComparison, WithAFolderIsAnErrorThatNamesIt) {
    const std::string here = Folder.Write("here.bin", SampleImage());
    EXPECT_EQ(CompareImages(here, Folder.Path().string(), Differences),
              "Error: " + Folder.Path().string() + ": it is a folder");
}

TEST_F(FileComparison, LetsOthersWorkMeanwhile) {
    const std::string path = Folder.Write("1.bin", SampleImage());
    int yields = 0;
    CompareImages(path, path, Differences, [&yields] { return ++yields > 0; });
    EXPECT_GE(yields, 8);
}

TEST_F(FileComparison, TellsWhereTheFilesDiffer) {
    Bytes other = SampleImage();
    other[0x1234] ^= std::byte{1};
    DifferingRanges ranges;
    EXPECT_EQ(CompareImages(Folder.Write("1.bin", SampleImage()), Folder.Write("2.bin", other), Differences,
                            {}, &ranges),
              "");
    ASSERT_EQ(ranges.Kept().size(), 1U);
    EXPECT_EQ(ranges.Kept().front().Offset, 0x1234U);
}

TEST_F(FileComparison, ThatIsEndedIsAnErrorWithoutDifferences) {
    Bytes other = SampleImage();
    other[4] ^= std::byte{1};
    int chunks = 0;
    DifferingRanges ranges;
    EXPECT_EQ(CompareImages(
                  Folder.Write("1.bin", SampleImage()), Folder.Write("2.bin", other), Differences,
                  [&chunks] { return ++chunks < 2; }, &ranges),
              "Error: The comparison was ended");
    EXPECT_EQ(chunks, 2);
    EXPECT_EQ(Differences, 0);
    EXPECT_THAT(ranges.Kept(), testing::IsEmpty());
}

TEST_F(FileComparison, OfAFileCutMeanwhileIsAnErrorThatNamesIt) {
    const std::string whole = Folder.Write("whole.bin", SampleImage());
    const std::string cut = Folder.Write("cut.bin", SampleImage());
    DifferingRanges ranges;
    const auto cutIt = [&cut] {
        std::filesystem::resize_file(cut, 100);
        return true;
    };
    const auto error = CompareImages(whole, cut, Differences, cutIt, &ranges);
    EXPECT_EQ(error, "Error: " + cut + ": it cannot be read to its end");
    EXPECT_EQ(Differences, 0);
    EXPECT_THAT(ranges.Kept(), testing::IsEmpty());
}

}  // namespace burnwick::test
