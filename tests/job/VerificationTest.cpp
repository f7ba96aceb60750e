#include <gmock/gmock.h>

#include "job/VerificationFileTest.h"
#include "support/ReadImage.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace fs = std::filesystem;

TEST(VerificationBlocks, AreA256thOfTheImage) {
    EXPECT_EQ(VerificationBlocks(65'536), 256);
    EXPECT_EQ(VerificationBlocks(1'048'576), 4096);
    EXPECT_EQ(VerificationBlocks(0), 0);
}

TEST(VerificationBlocks, AreRoundedToTheNearestNumber) {
    EXPECT_EQ(VerificationBlocks(1'000), 4);
    EXPECT_EQ(VerificationBlocks(1'024 + 127), 4);
    EXPECT_EQ(VerificationBlocks(1'024 + 129), 5);
}

TEST(VerificationBlocks, AreRoundedToTheEvenNumberFromTheMiddle) {
    EXPECT_EQ(VerificationBlocks(640), 2);
    EXPECT_EQ(VerificationBlocks(896), 4);
    EXPECT_EQ(VerificationBlocks(128), 0);
}

class ReadBack : public ::testing::Test {
protected:
    Verdict Judge(const Bytes& readBack) {
        return JudgeReadBack(ImageOf(Folder.Write("image.bin", Image)), Folder.Write("Verify.tmp", readBack));
    }

    TempFolder Folder;
    Bytes Image = ImageWith(65'536, 0, {0xC0, 0xDE, 0x00, 0x00});
};

TEST_F(ReadBack, ThatIsTheImageWasSuccessful) {
    const Verdict verdict = Judge(Image);
    EXPECT_EQ(verdict.Result, "Verifying was successfully.");
    EXPECT_EQ(verdict.Differences, 0);
    EXPECT_TRUE(verdict.IsMatch());
}

TEST_F(ReadBack, ThatDiffersIn3BytesSaysSo) {
    Bytes readBack = Image;
    for (const std::size_t at : std::initializer_list<std::size_t>{100, 200, 65'535}) {
        readBack[at] ^= std::byte{1};
    }
    const Verdict verdict = Judge(readBack);
    EXPECT_EQ(verdict.Result, "Verifying error: 3 bytes are different.");
    EXPECT_EQ(verdict.Differences, 3);
    EXPECT_FALSE(verdict.IsMatch());
}

TEST_F(ReadBack, ThatDiffersInOneByteKeepsThePlural) {
    Bytes readBack = Image;
    readBack[100] ^= std::byte{1};
    EXPECT_EQ(Judge(readBack).Result, "Verifying error: 1 bytes are different.");
}

TEST_F(ReadBack, OfAnotherSizeSaysSo) {
    const Verdict verdict = Judge(Bytes(Image.begin(), Image.end() - 256));
    EXPECT_EQ(verdict.Result, "Verifying error: File size mismatched.");
    EXPECT_EQ(verdict.Differences, std::nullopt);
    EXPECT_FALSE(verdict.IsMatch());
}

TEST_F(ReadBack, OfAnotherTypeSaysSo) {
    Bytes readBack = Image;
    readBack[0] = std::byte{0xBC};
    EXPECT_EQ(Judge(readBack).Result, "Verifying error: File type mismatched.");
}

TEST_F(ReadBack, ThatIsGoneIsNoMatch) {
    const Verdict verdict =
        JudgeReadBack(ImageOf(Folder.Write("image.bin", Image)), Folder.Path() / "gone.tmp");
    EXPECT_THAT(verdict.Result, ::testing::StartsWith("Verifying error: "));
    EXPECT_FALSE(verdict.IsMatch());
}

TEST(ComparisonStatus, TellsIdenticalFiles) {
    EXPECT_EQ(ComparisonStatus("", 0), "File 1 and File 2 are identical.");
}

TEST(ComparisonStatus, TellsOneByteInTheSingular) {
    EXPECT_EQ(ComparisonStatus("", 1), "1 byte is different.");
}

TEST(ComparisonStatus, TellsManyBytesWithoutSeparators) {
    EXPECT_EQ(ComparisonStatus("", 1234), "1234 bytes are different.");
}

TEST(ComparisonStatus, EndsAnErrorWithAPeriod) {
    EXPECT_EQ(ComparisonStatus("Error: File size mismatched", 0), "Error: File size mismatched.");
}

TEST_F(VerificationFileTest, IsVerifyTmpInTheFolder) {
    const auto file = VerificationFile::Claim(Folder.Path(), {});
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Path(), Folder.Path() / "Verify.tmp");
}

TEST_F(VerificationFileTest, GoesWithItsObject) {
    {
        const auto file = VerificationFile::Claim(Folder.Path(), {});
        Folder.Write("Verify.tmp", AnyBytes(100));
    }
    EXPECT_FALSE(IsThere("Verify.tmp"));
}

TEST_F(VerificationFileTest, HasANumberWhileOthersVerify) {
    const auto first = VerificationFile::Claim(Folder.Path(), {});
    const auto second = VerificationFile::Claim(Folder.Path(), {});
    const auto third = VerificationFile::Claim(Folder.Path(), {});
    EXPECT_EQ(second->Path(), Folder.Path() / "Verify2.tmp");
    EXPECT_EQ(third->Path(), Folder.Path() / "Verify3.tmp");
}

TEST_F(VerificationFileTest, LeavesTheFileOfAnotherAlone) {
    const auto first = VerificationFile::Claim(Folder.Path(), {});
    Folder.Write("Verify.tmp", AnyBytes(100));
    { const auto second = VerificationFile::Claim(Folder.Path(), {}); }
    EXPECT_TRUE(IsThere("Verify.tmp"));
}

TEST_F(VerificationFileTest, TakesTheFirstNameAgainOnceItIsFree) {
    { const auto first = VerificationFile::Claim(Folder.Path(), {}); }
    EXPECT_EQ(VerificationFile::Claim(Folder.Path(), {})->Path(), Folder.Path() / "Verify.tmp");
}

TEST_F(VerificationFileTest, IsNotToBeHadInAFolderThatIsNotThere) {
    EXPECT_EQ(VerificationFile::Claim(Folder.Path() / "missing", {}), nullptr);
}

}  // namespace burnwick::test
