#include "platform/serial/windows/ComNames.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(ComNames, AreWhatTheUserKnowsThePortBy) {
    for (const char* path : {"\\\\.\\COM5", "//./COM5", "\\\\?\\com5", "com5", "COM5"}) {
        EXPECT_EQ(ComName(path), "COM5");
        EXPECT_EQ(ComPath(path), "\\\\.\\COM5");
    }
}

TEST(ComNames, AboveNineHaveTheDevicesFolderToo) {
    EXPECT_EQ(ComPath("COM256"), "\\\\.\\COM256");
}

TEST(ComNames, OfOtherDevicesStay) {
    EXPECT_EQ(ComName("\\\\.\\CNCA0"), "CNCA0");
    EXPECT_EQ(ComPath("\\\\.\\CNCA0"), "\\\\.\\CNCA0");
}

TEST(ComNames, LeaveWhatIsNoPort) {
    for (const char* path :
         {"", "COM", "COMx", "COM5 ", "C:\\com5", "\\\\.\\", "\\\\server\\com5", "COM-1"}) {
        EXPECT_EQ(ComPath(path), path);
    }
    EXPECT_EQ(ComName("C:\\COM5"), "C:\\COM5");
}

}  // namespace
}  // namespace burnwick
