#include "ports/PortTableTest.h"

#include "platform/serial/SystemPorts.h"

namespace burnwick::test {

TEST_F(PortTable, GivesEachNumberTheSystemsDevice) {
    for (int port = 1; port <= 16; ++port) {
        EXPECT_EQ(DeviceOf(port, Devices), SystemDeviceOf(port));
        EXPECT_NE(DeviceOf(port, Devices), "");
    }
}

TEST_F(PortTable, IsOverriddenByTheSettings) {
    Own[1] = "/dev/serial/by-id/usb-A";
    EXPECT_EQ(DeviceOf(1, Devices), "/dev/serial/by-id/usb-A");
    EXPECT_EQ(DeviceOf(2, Devices), SystemDeviceOf(2));
}

TEST_F(PortTable, ReadsANumberOfOneOrTwoDigitsInEitherCase) {
    EXPECT_EQ(ParsePortChoice("COM3", Devices)->Number, 3);
    EXPECT_EQ(ParsePortChoice("com12", Devices)->Number, 12);
    EXPECT_EQ(ParsePortChoice("COM12", Devices)->Device, SystemDeviceOf(12));
}

TEST_F(PortTable, GivesANumberThatDoesNotExistWithoutADevice) {
    EXPECT_EQ(ParsePortChoice("COM0", Devices)->Number, 0);
    EXPECT_EQ(ParsePortChoice("COM17", Devices)->Number, 17);
    EXPECT_EQ(ParsePortChoice("COM17", Devices)->Device, "");
}

TEST_F(PortTable, ReadsNothingElse) {
    for (const char* text :
         {"", "COM", "COM-3", "COM+3", "COM3 ", "COM3x", "3", "COM99999999999", "ttyUSB0"}) {
        EXPECT_FALSE(ParsePortChoice(text, Devices)) << text;
    }
}

TEST_F(PortTable, FindsTheNumberOfADevicePath) {
    EXPECT_EQ(ParsePortChoice(SystemDeviceOf(7), Devices)->Number, 7);
    EXPECT_EQ(ParsePortChoice(SystemDeviceOf(7), Devices)->Device, SystemDeviceOf(7));
}

TEST_F(PortTable, UsesAnyOtherPathAsCOM16) {
    const auto choice = ParsePortChoice("./line", Devices);
    EXPECT_EQ(choice->Number, 16);
    EXPECT_EQ(choice->Device, "./line");
}

TEST_F(PortTable, TellsTheStoredSpeedByItsFirstCharacter) {
    const std::map<std::string, std::string> speeds{{"", "57600"},    {"0", "57600"},   {"1", "115200"},
                                                    {"12", "115200"}, {"2", "0"},       {"9600", "0"},
                                                    {"x", "57600"},   {"&All", "57600"}};
    for (const auto& [stored, speed] : speeds) {
        EXPECT_EQ(GetBaudRateSetting(stored), speed) << stored;
    }
}

}  // namespace burnwick::test
