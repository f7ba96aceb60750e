#include "platform/files/ReplaceFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "Forked.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::Forked;

class ReplaceFileTest : public testing::Test {
protected:
    static void Put(const fs::path& path, std::string_view content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    static std::string Content(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static mode_t PermissionsOf(const fs::path& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    std::ptrdiff_t FilesThere() const {
        return std::distance(fs::directory_iterator(Folder_.Path()), fs::directory_iterator());
    }

    test::TempFolder Folder_;
    fs::path File_ = Folder_.Path() / "file";
};

TEST_F(ReplaceFileTest, MakesAFileThatIsNotThere) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(ReplaceFile(File_, "one\r\n\0two"sv));
    EXPECT_EQ(Content(File_), "one\r\n\0two"sv);
}

TEST_F(ReplaceFileTest, GivesANewFileTheUsersOwnMask) {
    const mode_t mask = umask(0027);
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    umask(mask);
    EXPECT_EQ(PermissionsOf(File_), 0640U);
}

TEST_F(ReplaceFileTest, ReplacesAllOfTheOldContent) {
    Put(File_, "a long old content");
    EXPECT_TRUE(ReplaceFile(File_, "short"));
    EXPECT_EQ(Content(File_), "short");
    EXPECT_TRUE(ReplaceFile(File_, ""));
    EXPECT_EQ(Content(File_), "");
    EXPECT_EQ(FilesThere(), 1) << "nothing else is left behind";
}

TEST_F(ReplaceFileTest, WritesALargeFile) {
    const std::string large(5'000'000, 'x');
    EXPECT_TRUE(ReplaceFile(File_, large));
    EXPECT_EQ(Content(File_), large);
}

TEST_F(ReplaceFileTest, KeepsPermissions) {
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
        Put(File_, "old");
        ASSERT_EQ(chmod(File_.c_str(), mode), 0);
        EXPECT_TRUE(ReplaceFile(File_, "new"));
        EXPECT_EQ(PermissionsOf(File_), mode);
    }
}

TEST_F(ReplaceFileTest, KeepsTheOwnerWhenRootReplacesAUsersFile) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may write another user's file";
    }
    constexpr uid_t user = 1234;
    constexpr gid_t group = 4321;
    Put(File_, "old");
    ASSERT_EQ(chown(File_.c_str(), user, group), 0);
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    struct stat status {};
    ASSERT_EQ(stat(File_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, user);
    EXPECT_EQ(status.st_gid, group);
}

TEST_F(ReplaceFileTest, ReplacesWhatALinkLeadsTo) {
    fs::create_directory(Folder_.Path() / "other");
    const auto target = Folder_.Path() / "other" / "target";
    Put(target, "old");
    fs::create_symlink("other/target", Folder_.Path() / "between");
    fs::create_symlink(Folder_.Path() / "between", File_);
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    EXPECT_TRUE(fs::is_symlink(File_));
    EXPECT_EQ(fs::read_symlink(File_), Folder_.Path() / "between");
    EXPECT_TRUE(fs::is_symlink(Folder_.Path() / "between"));
    EXPECT_FALSE(fs::is_symlink(target));
    EXPECT_EQ(Content(target), "new");
}

TEST_F(ReplaceFileTest, MakesWhatALinkLeadsTo) {
    fs::create_symlink("target", File_);
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    EXPECT_TRUE(fs::is_symlink(File_));
    EXPECT_EQ(Content(Folder_.Path() / "target"), "new");
}

TEST_F(ReplaceFileTest, EndsForLinksInACircle) {
    fs::create_symlink("other", File_);
    fs::create_symlink("file", Folder_.Path() / "other");
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_EQ(FilesThere(), 2);
}

TEST_F(ReplaceFileTest, LeavesAFolderOrAPipeInTheFilesPlace) {
    fs::create_directory(File_);
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_TRUE(fs::is_directory(File_));
    const auto pipe = Folder_.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_FALSE(ReplaceFile(pipe, "new"));
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(ReplaceFileTest, FailsInAFolderThatIsNotThere) {
    EXPECT_FALSE(ReplaceFile(Folder_.Path() / "none" / "file", "new"));
    EXPECT_FALSE(fs::exists(Folder_.Path() / "none"));
    Put(File_, "old");
    EXPECT_FALSE(ReplaceFile(File_ / "file", "new"));
    EXPECT_EQ(Content(File_), "old");
}

TEST_F(ReplaceFileTest, FollowsNothingThatWaitsUnderTheNewFilesName) {
    Put(File_, "old");
    const auto victim = Folder_.Path() / "victim";
    Put(victim, "precious");
    fs::create_symlink(victim, Folder_.Path() / "file.new");
    EXPECT_TRUE(ReplaceFile(File_, "new"));
    EXPECT_EQ(Content(File_), "new");
    EXPECT_FALSE(fs::is_symlink(File_));
    EXPECT_EQ(Content(victim), "precious");
    ASSERT_EQ(mkfifo((Folder_.Path() / "file.new").c_str(), 0666), 0);
    EXPECT_TRUE(ReplaceFile(File_, "newer"));
    EXPECT_EQ(Content(File_), "newer");
}

TEST_F(ReplaceFileTest, GivesUpWhereAFolderHasTheNewFilesName) {
    Put(File_, "old");
    fs::create_directory(Folder_.Path() / "file.new");
    EXPECT_FALSE(ReplaceFile(File_, "new"));
    EXPECT_EQ(Content(File_), "old");
}

TEST_F(ReplaceFileTest, LeavesAFileThatMayNotBeWritten) {
    Put(File_, "old");
    ASSERT_EQ(chmod(File_.c_str(), 0444), 0);
    EXPECT_TRUE(test::DoneAsAnyUser([this] {
        if (ReplaceFile(File_, "new")) {
            _exit(1);
        }
    }));
    EXPECT_EQ(Content(File_), "old");
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(ReplaceFileTest, LeavesAFileInAFolderThatMayNotBeWritten) {
    Put(File_, "old");
    ASSERT_EQ(chmod(File_.c_str(), 0666), 0);
    ASSERT_EQ(chmod(Folder_.Path().c_str(), 0555), 0);
    EXPECT_TRUE(test::DoneAsAnyUser([this] {
        if (ReplaceFile(File_, "new")) {
            _exit(1);
        }
    }));
    ASSERT_EQ(chmod(Folder_.Path().c_str(), 0755), 0);
    EXPECT_EQ(Content(File_), "old");
}

TEST_F(ReplaceFileTest, LeavesTheOldContentWhenTheDiskIsFull) {
    Put(File_, "old");
    EXPECT_TRUE(Forked([this] {
                    constexpr rlim_t most = 1000;
                    const rlimit limit{most, most};
                    signal(SIGXFSZ, SIG_IGN);
                    if (setrlimit(RLIMIT_FSIZE, &limit) != 0
                        || ReplaceFile(File_, std::string(most + 1, 'x'))) {
                        _exit(1);
                    }
                }).Wait());
    EXPECT_EQ(Content(File_), "old");
    EXPECT_EQ(FilesThere(), 1) << "the half of the new file is gone";
}

TEST_F(ReplaceFileTest, LeavesTheOldOrTheNewContentWhereverItIsKilled) {
    const std::string old(20'000, 'o');
    const std::string fresh(30'000, 'n');
    bool sawOld = false;
    bool sawNew = false;
    bool killed = true;
    for (int stop = 1; killed; ++stop) {
        ASSERT_TRUE(ReplaceFile(File_, old)) << "what a killed process left behind is in the way: " << stop;
        killed = test::KilledAtStop(stop, [&] { ReplaceFile(File_, fresh); });
        const auto content = Content(File_);
        ASSERT_TRUE(content == old || content == fresh) << "killed at stop " << stop;
        sawOld = sawOld || content == old;
        sawNew = sawNew || (killed && content == fresh);
    }
    EXPECT_TRUE(sawOld);
    EXPECT_TRUE(sawNew);
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(ReplaceFileTest, ShowsNoReaderHalfAFile) {
    const std::string one(300'000, '1');
    const std::string two(200'000, '2');
    ASSERT_TRUE(ReplaceFile(File_, one));
    const Forked writer([&] {
        for (;;) {
            ReplaceFile(File_, two);
            ReplaceFile(File_, one);
        }
    });
    int changes = 0;
    bool wasOne = true;
    while (changes < 20) {
        const auto content = Content(File_);
        ASSERT_TRUE(content == one || content == two) << content.size();
        changes += (content == one) != wasOne ? 1 : 0;
        wasOne = content == one;
    }
}

}  // namespace
}  // namespace burnwick
