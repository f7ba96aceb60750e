#include "cli/CliTest.h"

namespace burnwick::test {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

}  // namespace

using PortsVerb = CliTest;

TEST_F(PortsVerb, ListsEveryPortThatOpens) {
    EXPECT_EQ(Run({"ports"}), 0);
    EXPECT_THAT(OutLines(), SizeIs(16));
    EXPECT_EQ(OutLines()[4].substr(0, 33), "COM5   /dev/ttyUSB0   usable     ");
}

TEST_F(PortsVerb, PrintsAJsonArray) {
    Settings["Ports/COM5"] = "/dev/serial/by-id/mine";
    EXPECT_EQ(Run({"ports", "--json"}), 0);
    ASSERT_THAT(Json(), SizeIs(16));
    EXPECT_EQ(Json()[4]["port"], "COM5");
    EXPECT_EQ(Json()[4]["device"], "/dev/serial/by-id/mine");
    EXPECT_EQ(Json()[4]["usable"], true);
    EXPECT_EQ(Json()[4]["description"], "Serial port");
}

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

TEST_F(PortsVerb, SaysWhenThereIsNone) {
    for (int port = 1; port <= 16; ++port) {
        Settings["Ports/COM" + std::to_string(port)] = Folder / "absent";
    }
    PortTrouble = CommError{CommErrorNumber::NotSerial, "no such device"};
    EXPECT_EQ(Run({"ports"}), 0);
    EXPECT_EQ(Out(), "No COM Port Available\n");
}

}  // namespace burnwick::test
