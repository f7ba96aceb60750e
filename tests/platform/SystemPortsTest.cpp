#include "platform/serial/SystemPorts.h"

#include <gtest/gtest.h>

#include <fstream>

#include "PseudoTerminal.h"
#include "platform/serial/linux/DeviceDescription.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;

TEST(SystemPorts, HaveADeviceForEveryComNumber) {
    EXPECT_EQ(SystemDeviceOf(1), "/dev/ttyS0");
    EXPECT_EQ(SystemDeviceOf(4), "/dev/ttyS3");
    EXPECT_EQ(SystemDeviceOf(5), "/dev/ttyUSB0");
    EXPECT_EQ(SystemDeviceOf(12), "/dev/ttyUSB7");
    EXPECT_EQ(SystemDeviceOf(13), "/dev/ttyACM0");
    EXPECT_EQ(SystemDeviceOf(16), "/dev/ttyACM3");
}

TEST(SystemPorts, HaveNoDeviceForOtherNumbers) {
    EXPECT_EQ(SystemDeviceOf(0), "");
    EXPECT_EQ(SystemDeviceOf(17), "");
}

TEST(SystemPorts, ArePresentWhenTheirDeviceIsThere) {
    const test::PseudoTerminal pty;
    EXPECT_TRUE(DevicePresent(pty.Path()));
    EXPECT_FALSE(DevicePresent("/dev/ttyUSB-none"));
    EXPECT_FALSE(DevicePresent("/tmp"));
    EXPECT_FALSE(DevicePresent(""));
}

TEST(SystemPorts, AreTheSameThroughALink) {
    const test::PseudoTerminal pty;
    const test::PseudoTerminal other;
    const test::TempFolder folder;
    const auto link = folder.Path() / "line";
    fs::create_symlink(pty.Path(), link);
    EXPECT_TRUE(SameDevice(link, pty.Path()));
    EXPECT_FALSE(SameDevice(link, other.Path()));
}

TEST(SystemPorts, ThatAreNotThereAreTheSameByName) {
    EXPECT_TRUE(SameDevice("/dev/ttyUSB-none", "/dev//ttyUSB-none"));
    EXPECT_FALSE(SameDevice("/dev/ttyUSB-none", "/dev/ttyUSB-other"));
    EXPECT_FALSE(SameDevice("/dev/ttyUSB-none", "/dev/null"));
}

TEST(SystemPorts, OfWhichNothingIsKnownAreSerialPorts) {
    EXPECT_EQ(DescribeDevice("/dev/ttyUSB-none"), "Serial port");
    EXPECT_EQ(DescribeDevice(""), "Serial port");
}

// A made-up device tree: a hub, an adapter in it, and the adapter's port.
class DescriptionTest : public testing::Test {
protected:
    DescriptionTest() {
        fs::create_directories(Port_);
        fs::create_directories(Sysfs_ / "class/tty/ttyUSB-made-up");
        fs::create_directory_symlink("../../../devices/hub/adapter/1-1:1.0/ttyUSB-made-up",
                                     Sysfs_ / "class/tty/ttyUSB-made-up/device");
        Write(Hub_ / "product", "USB Hub\n");
        Write(Hub_ / "idVendor", "1d6b\n");
        Write(Adapter_ / "idVendor", "0403\n");
    }

    static void Write(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }

    std::string Description() const { return DescribeDeviceIn(Sysfs_, "/dev/ttyUSB-made-up"); }

    test::TempFolder Folder_;
    fs::path Sysfs_ = Folder_.Path() / "sys";
    fs::path Hub_ = Sysfs_ / "devices/hub";
    fs::path Adapter_ = Hub_ / "adapter";
    fs::path Port_ = Adapter_ / "1-1:1.0/ttyUSB-made-up";
};

TEST_F(DescriptionTest, TellsMakerProductAndSerialNumber) {
    Write(Adapter_ / "manufacturer", "FTDI\n");
    Write(Adapter_ / "product", "FT232R USB UART\n");
    Write(Adapter_ / "serial", "A50285BI\n");
    EXPECT_EQ(Description(), "FTDI FT232R USB UART, serial number A50285BI");
}

TEST_F(DescriptionTest, LeavesOutWhatTheAdapterDoesNotTell) {
    Write(Adapter_ / "product", " USB-Serial\tController \n");
    EXPECT_EQ(Description(), "USB-Serial Controller");
}

TEST_F(DescriptionTest, IsNotThatOfTheHub) {
    EXPECT_EQ(Description(), "Serial port");
}

TEST_F(DescriptionTest, FollowsALinkToTheDevice) {
    Write(Adapter_ / "product", "Adapter\n");
    const auto link = Folder_.Path() / "by-id";
    Write(Folder_.Path() / "ttyUSB-made-up", "");
    fs::create_symlink("ttyUSB-made-up", link);
    EXPECT_EQ(DescribeDeviceIn(Sysfs_, link), "Adapter");
}

}  // namespace
}  // namespace burnwick
