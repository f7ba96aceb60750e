#include "app/DirFile.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace burnwick::test {

using DirFile::CleanPath;

TEST(DirFile, GivesTheNameAndTheFolderOfADrivesPath) {
    EXPECT_EQ(DirFile::FileName(R"(C:\Images\unit.bin)"), "unit.bin");
    EXPECT_EQ(DirFile::Folder(R"(C:\Images\unit.bin)"), R"(C:\Images)");
}

TEST(DirFile, GivesTheNameAndTheFolderOfAPathWithSlashes) {
    EXPECT_EQ(DirFile::FileName("/home/anna/unit.bin"), "unit.bin");
    EXPECT_EQ(DirFile::Folder("/home/anna/unit.bin"), "/home/anna");
}

TEST(DirFile, TakesQuotesAndBlanksOffAPath) {
    EXPECT_EQ(CleanPath(R"( "/nowhere/unit.bin" )"), "/nowhere/unit.bin");
    EXPECT_EQ(CleanPath("\t/nowhere/my unit.bin\t"), "/nowhere/my unit.bin");
}

TEST(DirFile, LeavesAPathThatIsThereAsItIs) {
    const TempFolder folder;
    const auto path = folder.Write("my unit 2.bin", {});
    EXPECT_EQ(CleanPath(path), path);
}

TEST(DirFile, FindsADriveBehindOtherWords) {
    EXPECT_EQ(CleanPath(R"(/open C:\Images\unit.bin)"), R"(C:\Images\unit.bin)");
}

TEST(DirFile, FindsANetworkShareBehindOtherWords) {
    EXPECT_EQ(CleanPath(R"(/open \\server\images\unit.bin)"), R"(\\server\images\unit.bin)");
}

TEST(DirFile, TakesNoFileForAnotherThatIsNotThere) {
    const TempFolder folder;
    const auto path = folder.Write("unit.bin", {});
    EXPECT_EQ(CleanPath(path + " old"), path + " old");
}

TEST(DirFile, KeepsAPathWithBlanksThatIsNotThere) {
    EXPECT_EQ(CleanPath("/nowhere/my unit.bin"), "/nowhere/my unit.bin");
}

TEST(DirFile, GivesAnEmptyPathForNothing) {
    EXPECT_EQ(CleanPath(""), "");
    EXPECT_EQ(CleanPath("  \"\" "), "");
}

TEST(DirFile, KeepsNamesInOtherScripts) {
    EXPECT_EQ(CleanPath("\"/nowhere/\xD0\xBE\xD0\xB1\xD1\x80\xD0\xB0\xD0\xB7.bin\""),
              "/nowhere/\xD0\xBE\xD0\xB1\xD1\x80\xD0\xB0\xD0\xB7.bin");
}

}  // namespace burnwick::test
