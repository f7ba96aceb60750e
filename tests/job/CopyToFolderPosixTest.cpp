#include "job/CopyToFolderTest.h"
#include "support/AnyUser.h"
#include "support/LittleRoom.h"

// Links, rights and full disks, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(CopyToFolderTest, ALinkThatLeadsNowhereIsThere) {
    fs::create_symlink("nowhere", Folder_.Path() / "link.bin");
    EXPECT_TRUE(Has("link.bin"));
}

TEST_F(CopyToFolderTest, ANewCopyIsLikeItsSource) {
    fs::permissions(Source_, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(Copy(Existing::Keep), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(fs::status(Target_).permissions(), fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AReplacedFileKeepsItsPermissions) {
    Put(Target_, Old_);
    const auto permissions = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(Target_, permissions);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(fs::status(Target_).permissions(), permissions);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AFileIsNotCopiedOntoItself) {
    for (const bool viaLink : {false, true}) {
        fs::remove(Target_);
        if (viaLink) {
            fs::create_symlink(Source_, Target_);
        } else {
            fs::create_hard_link(Source_, Target_);
        }
        const LittleRoom none(0);
        EXPECT_EQ(Copy(), "");
        EXPECT_EQ(ReadFile(Source_), Content_);
        EXPECT_EQ(fs::is_symlink(Target_), viaLink);
    }
    EXPECT_EQ(CopyWhole(Source_, Source_, Existing::Replace), "");
    EXPECT_EQ(ReadFile(Source_), Content_);
}

TEST_F(CopyToFolderTest, ALinkStaysOneAndWhatItLeadsToIsReplaced) {
    Put(Folder_.Path() / "led to.bin", Old_);
    fs::create_symlink("../led to.bin", Target_);
    EXPECT_EQ(Copy(), "");
    EXPECT_TRUE(fs::is_symlink(Target_));
    EXPECT_FALSE(fs::is_symlink(Folder_.Path() / "led to.bin"));
    EXPECT_EQ(ReadFile(Folder_.Path() / "led to.bin"), Content_);
}

TEST_F(CopyToFolderTest, ALinkThatLeadsNowhereIsReplaced) {
    fs::create_symlink("nowhere", Target_);
    EXPECT_EQ(Copy(), "");
    EXPECT_EQ(ReadFile(Target_), Content_);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, LinksInACircleAreLeftAlone) {
    fs::create_symlink("unit.bin", Target_);
    EXPECT_TRUE(Copy().starts_with("The copy cannot be written: ")) << Copy();
    EXPECT_TRUE(fs::is_symlink(Target_));
}

TEST_F(CopyToFolderTest, AFolderThatMayNotBeWrittenIsTold) {
    const AnyUser user;
    EXPECT_EQ(Copy(), "The copy cannot be written: Permission denied.");
}

TEST_F(CopyToFolderTest, AFileThatMayNotBeWrittenIsNotReplaced) {
    Put(Target_, Old_);
    fs::permissions(Target_, fs::perms::owner_read | fs::perms::others_read);
    fs::permissions(Target_.parent_path(), fs::perms::all);
    {
        const AnyUser user;
        EXPECT_EQ(Copy(), "The copy cannot be written: Permission denied.");
    }
    EXPECT_EQ(ReadFile(Target_), Old_);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(CopyToFolderTest, AFolderWithoutRoomKeepsTheOldFile) {
    Put(Target_, Old_);
    {
        const LittleRoom little(100'000);
        EXPECT_EQ(Copy(), "The copy cannot be written: File too large.");
    }
    EXPECT_EQ(ReadFile(Target_), Old_);
    EXPECT_EQ(FilesThere(), 1) << "the part of the copy is gone";
}

TEST_F(CopyToFolderTest, ANameTooLongForTheSystemIsTold) {
    const auto longName = Target_.parent_path() / std::string(4000, 'x');
    EXPECT_EQ(CopyWhole(Source_, longName, Existing::Replace),
              "The copy cannot be written: File name too long.");
}

}  // namespace burnwick::test
