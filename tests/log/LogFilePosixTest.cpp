#include <gmock/gmock.h>
#include <sys/stat.h>

#include "log/LogFileTest.h"
#include "support/AnyUser.h"

// Pipes and rights, as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

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

TEST_F(LogFileTest, TellsOfAnUnusablePath) {
    const fs::path folder = Folder.Path() / (std::string(4000, 'x') + "\n<b>&");
    EXPECT_THAT(ReadLogFile(folder).Trouble, HasSubstr("File name too long."));
    EXPECT_THAT(ReadLogFile(folder).Trouble, HasSubstr("xx <b>&"));
}

}  // namespace burnwick::test
