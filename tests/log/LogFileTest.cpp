#include "log/LogFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>

#include "log/LogFolder.h"
#include "platform/FileLock.h"
#include "support/AnyUser.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class LogFileTest : public LogFolder {
protected:
    LogFile Read() const { return ReadLogFile(Folder.Path()); }
    std::string Clear() const { return ClearLogFile(Folder.Path()); }
};

TEST_F(LogFileTest, HoldsWhatWasWritten) {
    Write(Failure("/unit.bin"));
    EXPECT_EQ(Read().Content, FailureText("/unit.bin"));
    EXPECT_EQ(Read().Trouble, "");
}

TEST_F(LogFileTest, IsEmptyWhenThereIsNone) {
    EXPECT_EQ(Read().Content, "");
    EXPECT_EQ(Read().Trouble, "");
    EXPECT_EQ(ReadLogFile(Folder.Path() / "none").Trouble, "");
}

TEST_F(LogFileTest, TellsOfAFolderInItsPlaceAndLeavesIt) {
    fs::create_directory(Live);
    EXPECT_THAT(Read().Trouble, HasSubstr("It is a folder."));
    EXPECT_THAT(Read().Trouble, HasSubstr(Live.string()));
    EXPECT_FALSE(Read().MayBeCleared);
    EXPECT_THAT(Clear(), HasSubstr("It is a folder."));
    EXPECT_TRUE(fs::is_directory(Live));
}

TEST_F(LogFileTest, DoesNotWaitForAPipeInItsPlace) {
    ASSERT_EQ(mkfifo(Live.c_str(), 0666), 0);
    EXPECT_THAT(Read().Trouble, HasSubstr("It is not a file."));
    EXPECT_THAT(Clear(), HasSubstr("It is not a file."));
    EXPECT_TRUE(fs::is_fifo(Live));
}

TEST_F(LogFileTest, TellsThatItMayNotBeRead) {
    Put(Live, "secret");
    ASSERT_EQ(chmod(Live.c_str(), 0), 0);
    const AnyUser user;
    EXPECT_THAT(Read().Trouble, HasSubstr("Permission denied."));
    EXPECT_FALSE(Read().MayBeCleared);
}

TEST_F(LogFileTest, TellsOfAnUnusablePath) {
    const fs::path folder = Folder.Path() / (std::string(4000, 'x') + "\n<b>&");
    EXPECT_THAT(ReadLogFile(folder).Trouble, HasSubstr("File name too long."));
    EXPECT_THAT(ReadLogFile(folder).Trouble, HasSubstr("xx <b>&"));
}

TEST_F(LogFileTest, MayBeClearedWhenItIsTooLargeToBeShown) {
    Put(Live, "");
    fs::resize_file(Live, 100'000'001);
    EXPECT_THAT(Read().Trouble, HasSubstr("too large"));
    EXPECT_EQ(Read().Content, "");
    EXPECT_TRUE(Read().MayBeCleared);
    EXPECT_EQ(Clear(), "");
    EXPECT_FALSE(fs::exists(Live));
}

TEST_F(LogFileTest, IsDeletedWhenItIsCleared) {
    Write(Failure("/unit.bin"));
    EXPECT_EQ(Clear(), "");
    EXPECT_THAT(Names(), IsEmpty());
    Write(Failure("/next.bin"));
    EXPECT_EQ(Log(), FailureText("/next.bin")) << "and begins anew";
}

TEST_F(LogFileTest, IsClearedAlsoWhenThereIsNone) {
    EXPECT_EQ(Clear(), "");
    EXPECT_TRUE(fs::is_empty(Folder.Path()));
}

TEST_F(LogFileTest, TellsThatItCannotBeDeleted) {
    Put(Live, "kept");
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0555), 0);
    {
        const AnyUser user;
        EXPECT_THAT(Clear(), HasSubstr("Permission denied."));
    }
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(Log(), "kept");
}

TEST_F(LogFileTest, IsClearedAlsoWhileAnotherProgramKeepsTheLock) {
    Put(Live, "old");
    const auto lock = LockFile(Folder / "Burnwick.log.lock", std::chrono::milliseconds(0));
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(Clear(), "");
    EXPECT_FALSE(fs::exists(Live));
}

}  // namespace burnwick::test
