#include <sys/resource.h>
#include <sys/stat.h>

#include "log/LogTrouble.h"
#include "platform/Forked.h"

// Pipes, rights and full disks, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;

namespace {

// On a disk that has no room for a file beyond so many bytes.
bool DoneWithFilesOfAtMost(rlim_t most, const std::function<void()>& work) {
    return Forked([most, &work] {
               const rlimit limit{most, most};
               signal(SIGXFSZ, SIG_IGN);
               if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
                   _exit(1);
               }
               work();
           })
        .Wait();
}

}  // namespace

TEST_F(LogTrouble, DoesNotWaitForAPipeInTheLogsOrTheScratchFilesPlace) {
    ASSERT_EQ(mkfifo(Live.c_str(), 0666), 0);
    WriteBoth();
    EXPECT_TRUE(fs::is_fifo(Live));
    fs::remove(Live);
    ASSERT_EQ(mkfifo(Scratch.c_str(), 0666), 0);
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_TRUE(fs::is_fifo(Scratch));
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogTrouble, DoesNothingInAFolderThatMayNotBeWritten) {
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0555), 0);
    EXPECT_TRUE(DoneAsAnyUser([this] { WriteBoth(); }));
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_TRUE(fs::is_empty(Folder.Path()));
}

TEST_F(LogTrouble, AppendsButRotatesNothingWhereOnlyTheLogMayBeWritten) {
    LogHolds(Records(1, 45));
    ASSERT_EQ(chmod(Live.c_str(), 0666), 0);
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0555), 0);
    EXPECT_TRUE(DoneAsAnyUser([this] { Write(Failure("/new.bin")); }));
    ASSERT_EQ(chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + FailureText("/new.bin"));
    EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
}

TEST_F(LogTrouble, LeavesALogThatMayNotBeWritten) {
    for (const int last : {2, 45}) {
        LogHolds(Records(1, last));
        ASSERT_EQ(chmod(Live.c_str(), 0444), 0);
        EXPECT_TRUE(DoneAsAnyUser([this] { WriteBoth(); }));
        EXPECT_EQ(Log(), Records(1, last));
        EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
        fs::remove(Live);
    }
}

TEST_F(LogTrouble, TakesHalfARecordBackWhenTheDiskIsFull) {
    LogHolds(Records(1, 4));
    EXPECT_TRUE(DoneWithFilesOfAtMost(2010, [this] { Write(Failure("/new.bin")); }));
    EXPECT_EQ(Log(), Records(1, 4));
    EXPECT_TRUE(
        DoneWithFilesOfAtMost(2010, [this] { LogBaudRateChange(Folder.Path(), false, Afternoon()); }));
    EXPECT_EQ(Log(), Records(1, 4));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Log(), Records(1, 4) + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogTrouble, LosesNothingWhenTheDiskIsFullDuringARotation) {
    const auto text = Records(1, 45);
    for (const rlim_t most : {100U, 10'000U, 14'996U}) {
        LogHolds(text);
        EXPECT_TRUE(DoneWithFilesOfAtMost(most, [this] { Write(Failure("/new.bin")); }));
        EXPECT_EQ(Log(), text);
        EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"}) << "no half of a scratch file is left";
    }
}

TEST_F(LogTrouble, KeepsAllRecordsWhenTheDiskFillsUpBehindARotation) {
    const auto text = Records(1, 45);
    LogHolds(text);
    EXPECT_TRUE(DoneWithFilesOfAtMost(15'010, [this] { Write(Failure("/new.bin")); }));
    EXPECT_EQ(Content(Archive), text);
    EXPECT_EQ(Log(), FromItsPath(Records(16, 45)));
}

}  // namespace burnwick::test
