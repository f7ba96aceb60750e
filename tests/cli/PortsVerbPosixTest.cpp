#include "cli/CliTest.h"

// A device that is always there, as POSIX systems have it.
namespace burnwick::test {

using ::testing::HasSubstr;
using ::testing::SizeIs;

using PortsVerb = CliTest;

TEST_F(PortsVerb, ShowsAPortThatIsThereButNotUsableWithItsReason) {
    for (int port = 1; port <= 16; ++port) {
        Settings["Ports/COM" + std::to_string(port)] = port == 3 ? "/dev/null" : Folder / "absent";
    }
    PortTrouble = CommError{CommErrorNumber::NotPermitted, "permission denied"};
    EXPECT_EQ(Run({"ports"}), 0);
    ASSERT_THAT(OutLines(), SizeIs(1));
    EXPECT_THAT(Out(), HasSubstr("COM3"));
    EXPECT_THAT(Out(), HasSubstr("not usable"));
    EXPECT_THAT(Out(), HasSubstr("permission denied"));
}

}  // namespace burnwick::test
