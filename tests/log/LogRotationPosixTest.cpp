#include <sys/stat.h>

#include <ctime>

#include "log/LogRotation.h"
#include "platform/EnvironmentVariable.h"

// Time zones, links and rights, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(LogRotation, NamesTheArchiveByTheLocalDayOfTheLastWrite) {
    // A zone ten hours ahead, where the next day has begun.
    const EnvironmentVariable zone("TZ", "ZONE-10");
    tzset();
    Put(Live, Records(1, 45));
    const std::chrono::sys_seconds moment =
        std::chrono::sys_days(std::chrono::year(2004) / 12 / 31) + std::chrono::hours(14);
    fs::last_write_time(Live, std::chrono::file_clock::from_sys(moment));
    Write(Failure("/new.bin"));
    EXPECT_EQ(Names(), (std::set<std::string>{"Burnwick.log", "Burnwick20050101.log"}));
}

TEST_F(LogRotation, TakesALinkOrFolderForATakenName) {
    fs::create_symlink("nowhere", Archive);
    fs::create_directory(SecondArchive);
    LogHolds(Records(1, 45));
    Write(Failure("/new.bin"));
    EXPECT_TRUE(fs::is_symlink(Archive));
    EXPECT_TRUE(fs::is_directory(SecondArchive));
    EXPECT_EQ(Log(), Records(1, 45) + " \r\n" + FailureText("/new.bin"));
}

TEST_F(LogRotation, KeepsTheLogsPermissions) {
    LogHolds(Records(1, 45));
    ASSERT_EQ(chmod(Live.c_str(), 0600), 0);
    Write(Failure("/new.bin"));
    EXPECT_EQ(fs::status(Live).permissions(), fs::perms{0600});
}

}  // namespace burnwick::test
