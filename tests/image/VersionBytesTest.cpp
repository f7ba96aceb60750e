#include <gmock/gmock.h>

#include "image/MemoryImage.h"

// The version of the kinds that hold it in bytes: 3, 5 and above.
namespace burnwick::test {

namespace {

ImageBuilder Newer(std::size_t size, const char* code) {
    return ImageBuilder(size).TypeCode(code).SecondTypeCode("00000000").Byte(14, 0);
}

}  // namespace

TEST(VersionBytes, StandAt8064) {
    for (const char* code : {"0000E122", "0000E128", "C0DE0131", "C0DE0137", "C0DE0149", "C0DE0157"}) {
        EXPECT_EQ(InfoOf(Newer(KiB128, code).Byte(0x3000, 1).Byte(8064, 4).Byte(8065, 10)).Version, "4.10")
            << code;
    }
}

TEST(VersionBytes, AreDecimalWithTwoDigitsBehindThePoint) {
    const auto version = [](unsigned major, unsigned minor) {
        return InfoOf(Newer(KiB128, "C0DE0137").Byte(8064, major).Byte(8065, minor)).Version;
    };
    EXPECT_EQ(version(0, 0), "0.00");
    EXPECT_EQ(version(1, 9), "1.09");
    EXPECT_EQ(version(12, 99), "12.99");
    EXPECT_EQ(version(255, 255), "255.255");
}

TEST(VersionBytes, OfBootCodeAreNotAvailable) {
    for (const char* code : {"BC0DE122", "BC0DE131", "BC0DE137", "BC0DE149", "BC0DE157"}) {
        EXPECT_EQ(InfoOf(Newer(KiB128, code).Byte(8064, 4).Byte(8065, 10)).Version, "N/A") << code;
    }
}

TEST(VersionBytes, OfASecondPartAreReadThere) {
    const auto info = InfoOf(ImageBuilder(KiB128)
                                 .TypeCode("BC0DE122")
                                 .SecondTypeCode("BC0D0000")
                                 .Byte(8064, 9)
                                 .Byte(0x10000 + 8064, 4)
                                 .Byte(0x10000 + 8065, 10));
    EXPECT_EQ(info.Version, "4.10");
}

TEST(VersionBytes, PastTheFilesEndReadZero) {
    EXPECT_EQ(InfoOf(Newer(8065, "C0DE0137").Byte(8064, 4)).Version, "4.00");
    EXPECT_EQ(InfoOf(Newer(100, "C0DE0137")).Version, "0.00");
}

TEST(VersionBytes, OfAFileOf64KiBAreOneAt0x3004) {
    for (const char* code : {"BC0DE122", "BC0DE131", "C0DE0131", "BC0DE137", "C0DE0149", "BC0DE157"}) {
        EXPECT_EQ(InfoOf(Newer(KiB64, code).Byte(0x3004, 42)).Version, "42") << code;
        EXPECT_EQ(InfoOf(Newer(KiB64, code).Byte(0x3004, 0)).Version, "0") << code;
    }
}

}  // namespace burnwick::test
