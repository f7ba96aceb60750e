#include "job/ListedFileTest.h"

namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(ListedFileTest, IsFoundByItsName) {
    Folder.Write("Burnwick.hlp", {});
    EXPECT_EQ(Found(), Folder.Path() / "Burnwick.hlp");
}

TEST_F(ListedFileTest, IsFoundInAnyCaseOfItsLetters) {
    Folder.Write("BURNWICK.HLP", {});
    EXPECT_EQ(Found(), Folder.Path() / "BURNWICK.HLP");
}

TEST_F(ListedFileTest, IsNoneWithoutAFileOfItsName) {
    Folder.Write("Burnwick.hlp.old", {});
    Folder.Write("Burnwick", {});
    EXPECT_EQ(Found(), "");
}

TEST_F(ListedFileTest, IsNoFolderOfItsName) {
    fs::create_directory(Folder.Path() / "Burnwick.hlp");
    EXPECT_EQ(Found(), "");
}

TEST_F(ListedFileTest, IsThatOfTheFirstFolderThatHasOne) {
    const fs::path first = Folder.Path() / "first";
    const fs::path second = Folder.Path() / "second";
    fs::create_directory(first);
    fs::create_directory(second);
    Folder.Write("second/BURNWICK.HLP", {});
    EXPECT_EQ(ListedFile({Folder.Path() / "gone", first, second}, "Burnwick.hlp"), second / "BURNWICK.HLP");
    Folder.Write("first/Burnwick.hlp", {});
    EXPECT_EQ(ListedFile({first, second}, "Burnwick.hlp"), first / "Burnwick.hlp");
}

TEST_F(ListedFileTest, IsNotInAFolderWhoseNameIsTooLong) {
    EXPECT_EQ(ListedFile({Folder.Path() / std::string(4000, 'x')}, "Burnwick.hlp"), "");
    EXPECT_EQ(ListedFile({}, "Burnwick.hlp"), "");
}

}  // namespace burnwick::test
