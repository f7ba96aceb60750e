#include "platform/files/FileLock.h"

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "support/Elapsed.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

class FileLockTest : public testing::Test {
protected:
    // Another process that holds the lock.
    std::unique_ptr<ChildProcess> Holder() {
        return std::make_unique<ChildProcess>([this] {
            // Kept until the process is killed.
            static_cast<void>(LockFile(Path_, 0ms).release());
        });
    }

    test::TempFolder Folder_;
    std::filesystem::path Path_ = Folder_.Path() / "settings.lock";
};

TEST_F(FileLockTest, MakesItsFile) {
    EXPECT_NE(LockFile(Path_, 0ms), nullptr);
    EXPECT_TRUE(std::filesystem::exists(Path_));
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
    EXPECT_NE(LockFile(Path_, 0ms), nullptr);
}

TEST_F(FileLockTest, IsGivenAsSoonAsItIsFree) {
    auto holder = Holder();
    const pid_t killer = fork();
    if (killer == 0) {
        usleep(30'000);
        kill(holder->Process(), SIGKILL);
        _exit(0);
    }
    EXPECT_NE(LockFile(Path_, 60s), nullptr);
    waitpid(killer, nullptr, 0);
}

TEST_F(FileLockTest, IsNotGivenWhereNoFileCanBeMade) {
    EXPECT_EQ(LockFile(Folder_.Path() / "none" / "settings.lock", 60s), nullptr);
}

}  // namespace
}  // namespace burnwick
