#include <sys/stat.h>

#include "job/ListedFileTest.h"
#include "support/AnyUser.h"

// Names that differ in case alone, pipes, links and rights, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(ListedFileTest, IsThatOfTheVeryNameAmongSeveral) {
    for (const char* name : {"BURNWICK.HLP", "Burnwick.hlp", "burnwick.hlp", "BURNWICK.hlp"}) {
        Folder.Write(name, {});
    }
    EXPECT_EQ(Found(), Folder.Path() / "Burnwick.hlp");
    fs::remove(Folder.Path() / "Burnwick.hlp");
    EXPECT_EQ(Found(), Folder.Path() / "BURNWICK.HLP");
}

TEST_F(ListedFileTest, IsNoPipeOfItsName) {
    ASSERT_EQ(mkfifo((Folder / "Burnwick.hlp").c_str(), 0600), 0);
    EXPECT_EQ(Found(), "");
}

TEST_F(ListedFileTest, IsNoLinkThatLeadsNowhere) {
    fs::create_symlink(Folder.Path() / "gone", Folder.Path() / "Burnwick.hlp");
    EXPECT_EQ(Found(), "");
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

}  // namespace burnwick::test
