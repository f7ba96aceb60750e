#include "platform/serial/SystemPorts.h"

#include <gtest/gtest.h>

#include "TestLine.h"

namespace burnwick {
namespace {

TEST(SystemPorts, HaveADeviceForEveryComNumber) {
    EXPECT_EQ(SystemDeviceOf(1), "\\\\.\\COM1");
    EXPECT_EQ(SystemDeviceOf(16), "\\\\.\\COM16");
}

TEST(SystemPorts, HaveNoDeviceForOtherNumbers) {
    EXPECT_EQ(SystemDeviceOf(0), "");
    EXPECT_EQ(SystemDeviceOf(17), "");
}

TEST(SystemPorts, AreNotPresentUnderNamesThatNobodyHas) {
    for (const char* name : {"", "\\\\.\\COM255", "\\\\.\\", "C:\\", "C:\\windows", "COM"}) {
        EXPECT_FALSE(DevicePresent(name)) << name;
    }
}

TEST(SystemPorts, ArePresentWhenTheSystemHasThem) {
    const test::TestLine line;
    if (!line.Exists()) {
        GTEST_SKIP() << test::TestLine::WhyNot;
    }
    EXPECT_TRUE(DevicePresent("\\\\.\\" + line.Near()));
    EXPECT_TRUE(DevicePresent(line.Near()));
}

TEST(SystemPorts, AreTheSameHoweverTheyAreWritten) {
    EXPECT_TRUE(SameDevice("\\\\.\\COM200", "//./com200"));
    EXPECT_TRUE(SameDevice("\\\\.\\COM200", "COM200"));
    EXPECT_FALSE(SameDevice("\\\\.\\COM200", "\\\\.\\COM20"));
    EXPECT_TRUE(SameDevice("C:\\one", "c:\\ONE"));
    EXPECT_FALSE(SameDevice("C:\\one", "\\\\.\\COM1"));
}

TEST(SystemPorts, OfWhichNothingIsKnownAreSerialPorts) {
    EXPECT_EQ(DescribeDevice("\\\\.\\COM200"), "Serial port");
    EXPECT_EQ(DescribeDevice(""), "Serial port");
}

}  // namespace
}  // namespace burnwick
