#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "job/VerificationFileTest.h"
#include "support/SampleImages.h"

// Processes as POSIX systems have them.
namespace burnwick::test {

TEST_F(VerificationFileTest, ReplacesWhatAKilledProcessLeft) {
    const pid_t child = fork();
    if (child == 0) {
        const auto file = VerificationFile::Claim(Folder.Path(), {});
        Folder.Write("Verify.tmp", AnyBytes(100));
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(IsThere("Verify.tmp"));
    const auto file = VerificationFile::Claim(Folder.Path(), {});
    EXPECT_EQ(file->Path(), Folder.Path() / "Verify.tmp");
    EXPECT_FALSE(IsThere("Verify.tmp"));
}

}  // namespace burnwick::test
