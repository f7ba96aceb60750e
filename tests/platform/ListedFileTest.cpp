#include "platform/ListedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/AnyUser.h"
#include "support/TempFolder.h"

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;

class ListedFileTest : public testing::Test {
protected:
    fs::path Found() const { return ListedFile({Folder.Path()}, "Burnwick.hlp"); }

    TempFolder Folder;
};

TEST_F(ListedFileTest, IsFoundByItsName) {
    Folder.Write("Burnwick.hlp", {});
    EXPECT_EQ(Found(), Folder.Path() / "Burnwick.hlp");
}

TEST_F(ListedFileTest, IsFoundInAnyCaseOfItsLetters) {
    Folder.Write("BURNWICK.HLP", {});
    EXPECT_EQ(Found(), Folder.Path() / "BURNWICK.HLP");
}

TEST_F(ListedFileTest, IsThatOfTheVeryNameAmongSeveral) {
    for (const char* name : {"BURNWICK.HLP", "Burnwick.hlp", "burnwick.hlp", "BURNWICK.hlp"}) {
        Folder.Write(name, {});
    }
    EXPECT_EQ(Found(), Folder.Path() / "Burnwick.hlp");
    fs::remove(Folder.Path() / "Burnwick.hlp");
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

TEST_F(ListedFileTest, IsNoPipeOfItsName) {
    ASSERT_EQ(mkfifo((Folder / "Burnwick.hlp").c_str(), 0600), 0);
    EXPECT_EQ(Found(), "");
}

TEST_F(ListedFileTest, IsNoLinkThatLeadsNowhere) {
    fs::create_symlink(Folder.Path() / "gone", Folder.Path() / "Burnwick.hlp");
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

TEST_F(ListedFileTest, IsNotInAFolderThatCannotBeListed) {
    Folder.Write("Burnwick.hlp", {});
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0311), 0);
    {
        const AnyUser user;
        EXPECT_EQ(Found(), "");
    }
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0755), 0);
}

TEST_F(ListedFileTest, IsNotInAFolderWhoseNameIsTooLong) {
    EXPECT_EQ(ListedFile({Folder.Path() / std::string(4000, 'x')}, "Burnwick.hlp"), "");
    EXPECT_EQ(ListedFile({}, "Burnwick.hlp"), "");
}

}  // namespace
}  // namespace burnwick::test
