#include <filesystem>

#include "cli/CliTest.h"

// A file that is deleted while the program has it open, as POSIX systems let that happen.
namespace burnwick::test {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;

class WhatWasReadBack : public CliTest {
protected:
    int VerifyAndLoseIt() {
        auto options = UnitOfSize(262'144);
        options.Flash = SampleImage(262'144);
        Connect(options);
        Loop.At(Loop.Time() + 300ms, [this] { std::filesystem::remove(Folder / "home/Verify.tmp"); });
        return Run({"verify", Folder.Write("image.bin", SampleImage(262'144)), "--port", "COM2"});
    }
};

TEST_F(WhatWasReadBack, GivesNoResultWhenItIsGone) {
    EXPECT_EQ(VerifyAndLoseIt(), 6);
    EXPECT_THAT(Out(), Not(HasSubstr("Verifying was")));
    EXPECT_THAT(Out(), Not(HasSubstr("Verifying error")));
    EXPECT_THAT(ErrLines().back(), HasSubstr("what was read back is gone"));
}

TEST_F(WhatWasReadBack, IsNeverLoggedAsASuccessWhenItIsGone) {
    EXPECT_EQ(VerifyAndLoseIt(), 6);
    EXPECT_THAT(LogText(), HasSubstr("\r\nStatus: Verifying error: what was read back is gone.\r\n"));
    EXPECT_THAT(LogText(), Not(HasSubstr("successfully")));
}

}  // namespace burnwick::test
