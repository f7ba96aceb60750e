#include "cli/CliTest.h"

// A device that is always there, as POSIX systems have it.
namespace burnwick::test {

using ::testing::HasSubstr;

using InfoOfADevice = CliTest;

TEST_F(InfoOfADevice, EndsWith6) {
    EXPECT_EQ(Run({"info", "/dev/zero"}), 6);
    EXPECT_THAT(Err(), HasSubstr("burnwick-cli: Cannot access to /dev/zero ("));
    EXPECT_EQ(Out(), "");
}

}  // namespace burnwick::test
