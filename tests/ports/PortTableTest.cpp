#include "ports/PortTable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "support/TempFolder.h"

namespace burnwick::test {

class PortTable : public ::testing::Test {
protected:
    ReadSetting Read = [this](const std::string& section, const std::string& key) {
        return Settings[section + "/" + key];
    };
    std::map<std::string, std::string> Settings;
    TempFolder Folder;
};

TEST_F(PortTable, GivesEachNumberItsDevice) {
    EXPECT_EQ(DeviceOf(1, Read), "/dev/ttyS0");
    EXPECT_EQ(DeviceOf(4, Read), "/dev/ttyS3");
    EXPECT_EQ(DeviceOf(5, Read), "/dev/ttyUSB0");
    EXPECT_EQ(DeviceOf(12, Read), "/dev/ttyUSB7");
    EXPECT_EQ(DeviceOf(13, Read), "/dev/ttyACM0");
    EXPECT_EQ(DeviceOf(16, Read), "/dev/ttyACM3");
}

TEST_F(PortTable, IsOverriddenByTheSettings) {
    Settings["Ports/COM1"] = "/dev/serial/by-id/usb-A";
    EXPECT_EQ(DeviceOf(1, Read), "/dev/serial/by-id/usb-A");
    EXPECT_EQ(DeviceOf(2, Read), "/dev/ttyS1");
}

TEST_F(PortTable, ReadsANumberOfOneOrTwoDigitsInEitherCase) {
    EXPECT_EQ(ParsePortChoice("COM3", Read)->Number, 3);
    EXPECT_EQ(ParsePortChoice("com12", Read)->Number, 12);
    EXPECT_EQ(ParsePortChoice("COM12", Read)->Device, "/dev/ttyUSB7");
}

TEST_F(PortTable, GivesANumberThatDoesNotExistWithoutADevice) {
    EXPECT_EQ(ParsePortChoice("COM0", Read)->Number, 0);
    EXPECT_EQ(ParsePortChoice("COM17", Read)->Number, 17);
    EXPECT_EQ(ParsePortChoice("COM17", Read)->Device, "");
}

TEST_F(PortTable, ReadsNothingElse) {
    for (const char* text :
         {"", "COM", "COM-3", "COM+3", "COM3 ", "COM3x", "3", "COM99999999999", "ttyUSB0"}) {
        EXPECT_FALSE(ParsePortChoice(text, Read)) << text;
    }
}

TEST_F(PortTable, FindsTheNumberOfADevicePath) {
    EXPECT_EQ(ParsePortChoice("/dev/ttyUSB2", Read)->Number, 7);
    EXPECT_EQ(ParsePortChoice("/dev/ttyUSB2", Read)->Device, "/dev/ttyUSB2");
}

TEST_F(PortTable, FindsTheNumberOfADevicePathThroughALink) {
    std::filesystem::create_symlink("/dev/null", Folder.Path() / "by-id");
    Settings["Ports/COM9"] = "/dev/null";
    const auto choice = ParsePortChoice(Folder / "by-id", Read);
    EXPECT_EQ(choice->Number, 9);
    EXPECT_EQ(choice->Device, Folder / "by-id");
}

TEST_F(PortTable, UsesAnyOtherPathAsCOM16) {
    const auto choice = ParsePortChoice("./line", Read);
    EXPECT_EQ(choice->Number, 16);
    EXPECT_EQ(choice->Device, "./line");
}

TEST_F(PortTable, TellsTheStoredSpeedByItsFirstCharacter) {
    const std::map<std::string, std::string> speeds{{"", "57600"},    {"0", "57600"},   {"1", "115200"},
                                                    {"12", "115200"}, {"2", "0"},       {"9600", "0"},
                                                    {"x", "57600"},   {"&All", "57600"}};
    for (const auto& [stored, speed] : speeds) {
        Settings["COMPort/BaudRate"] = stored;
        EXPECT_EQ(GetBaudRateSetting(Read), speed) << stored;
    }
}

}  // namespace burnwick::test
