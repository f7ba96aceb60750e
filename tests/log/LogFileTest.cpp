#include "log/LogFileTest.h"

#include <gmock/gmock.h>

#include <chrono>

#include "platform/files/FileLock.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

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

TEST_F(LogFileTest, IsClearedAlsoWhileAnotherProgramKeepsTheLock) {
    Put(Live, "old");
    const auto lock = LockFile(Folder / "Burnwick.log.lock", std::chrono::milliseconds(0));
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(Clear(), "");
    EXPECT_FALSE(fs::exists(Live));
}

}  // namespace burnwick::test
