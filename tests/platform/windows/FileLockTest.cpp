#include "platform/files/FileLock.h"

#include <gtest/gtest.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "support/Elapsed.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

class FileLockTest : public testing::Test {
protected:
    // Another process that holds the lock until it is killed.
    std::unique_ptr<Child> Holder() {
        auto holder = std::make_unique<Child>(Child::Doing(L"lock " + Quoted(Path_)));
        EXPECT_EQ(holder->Line(), "locked");
        return holder;
    }

    ForeignFolder Folder_;
    std::filesystem::path Path_ = Folder_.Path() / "settings.lock";
};

TEST_F(FileLockTest, MakesItsFile) {
    EXPECT_NE(LockFile(Path_, 0ms), nullptr);
    EXPECT_TRUE(std::filesystem::exists(Path_));
    EXPECT_EQ(std::filesystem::file_size(Path_), 0U);
}

TEST_F(FileLockTest, IsGivenToOneAtATime) {
    auto lock = LockFile(Path_, 0ms);
    EXPECT_EQ(LockFile(Path_, 0ms), nullptr);
    lock.reset();
    EXPECT_NE(LockFile(Path_, 0ms), nullptr);
}

TEST_F(FileLockTest, IsNotGivenWhileAnotherProcessHoldsItAndTheWaitEnds) {
    const auto holder = Holder();
    const auto waited = test::Elapsed([this] { EXPECT_EQ(LockFile(Path_, 50ms), nullptr); });
    EXPECT_GE(waited, 50ms);
    EXPECT_LT(waited, test::HangLimit);
}

TEST_F(FileLockTest, IsFreeWhenItsHolderWasKilled) {
    const auto holder = Holder();
    ASSERT_EQ(LockFile(Path_, 0ms), nullptr);
    holder->Kill();
    EXPECT_NE(LockFile(Path_, 10s), nullptr);
}

TEST_F(FileLockTest, IsGivenAsSoonAsItIsFree) {
    const auto holder = Holder();
    std::thread killer([&holder] {
        std::this_thread::sleep_for(30ms);
        holder->Kill();
    });
    EXPECT_NE(LockFile(Path_, 60s), nullptr);
    killer.join();
}

TEST_F(FileLockTest, IsGivenOnAFileThatMayOnlyBeRead) {
    Put(Path_, "");
    SetFileAttributesW(Path_.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(LockFile(Path_, 0ms), nullptr);
    SetFileAttributesW(Path_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileLockTest, IsNotGivenWhereNoFileCanBeMade) {
    EXPECT_EQ(LockFile(Folder_.Path() / "none" / "settings.lock", 60s), nullptr);
    EXPECT_EQ(LockFile(Folder_.Path(), 60s), nullptr);
}

}  // namespace
}  // namespace burnwick::test
