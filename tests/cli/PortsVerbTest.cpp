#include "cli/CliTest.h"
#include "platform/serial/SystemPorts.h"

namespace burnwick::test {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

}  // namespace

using PortsVerb = CliTest;

TEST_F(PortsVerb, ListsEveryPortThatOpens) {
    EXPECT_EQ(Run({"ports"}), 0);
    EXPECT_THAT(OutLines(), SizeIs(16));
    EXPECT_THAT(OutLines()[4], StartsWith("COM5   " + SystemDeviceOf(5)));
    EXPECT_THAT(OutLines()[4], HasSubstr("   usable     "));
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

TEST_F(PortsVerb, SaysWhenThereIsNone) {
    for (int port = 1; port <= 16; ++port) {
        Settings["Ports/COM" + std::to_string(port)] = Folder / "absent";
    }
    PortTrouble = CommError{CommErrorNumber::NotSerial, "no such device"};
    EXPECT_EQ(Run({"ports"}), 0);
    EXPECT_EQ(Out(), "No COM Port Available\n");
}

}  // namespace burnwick::test
