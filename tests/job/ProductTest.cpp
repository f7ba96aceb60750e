#include "job/Product.h"

#include <gtest/gtest.h>

namespace burnwick::test {

TEST(Product, TellsVersionAndBuild) {
    EXPECT_EQ(VersionText({.Major = 2, .Minor = 8, .Revision = 1000}), "Version 2.08 (Build 2.08.1000)");
}

TEST(Product, FillsMinorAndRevisionWithZeros) {
    EXPECT_EQ(VersionText({.Major = 3, .Minor = 0, .Revision = 7}), "Version 3.00 (Build 3.00.0007)");
}

TEST(Product, LeavesLongerNumbersWhole) {
    EXPECT_EQ(BuildNumber({.Major = 10, .Minor = 123, .Revision = 12345}), "10.123.12345");
}

TEST(Product, IsOfAnEquipmentMakerUnderAFolderThatSaysSo) {
    EXPECT_TRUE(IsOEM("C:\\OEM\\Tools"));
    EXPECT_TRUE(IsOEM("/opt/BurnwickOEM"));
}

TEST(Product, IsNotOfAnEquipmentMakerByLowerCaseLetters) {
    EXPECT_FALSE(IsOEM("C:\\oem\\tools"));
    EXPECT_FALSE(IsOEM("/opt/Oem"));
    EXPECT_FALSE(IsOEM(""));
}

}  // namespace burnwick::test
