#include "support/ImageBuilder.h"

#include <gmock/gmock.h>

#include <string>

#include "support/Hex.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace {

std::string HexOf(const Bytes& image, std::size_t at, std::size_t count) {
    const auto begin = image.begin() + static_cast<std::ptrdiff_t>(at);
    return ToHex({begin, begin + static_cast<std::ptrdiff_t>(count)});
}

}  // namespace

TEST(ImageBuilder, BeginsWithBytesOfNoPattern) {
    EXPECT_EQ(ImageBuilder(1000).Build(), AnyBytes(1000));
    EXPECT_EQ(ImageBuilder(1000, 7).Build(), AnyBytes(1000, 7));
}

TEST(ImageBuilder, PutsBothTypeCodes) {
    const Bytes image = ImageBuilder(0x4000).TypeCode("C0DE0149").SecondTypeCode("BC0D0A0B").Build();
    EXPECT_EQ(HexOf(image, 0, 4), "C0 DE 01 49");
    EXPECT_EQ(HexOf(image, 0x3000, 4), "BC 0D 0A 0B");
}

TEST(ImageBuilder, PutsTheHeaderTextBehindTheSignature) {
    const Bytes image = ImageBuilder(100).Fill(0).Signature(10).HeaderText("AB").Build();
    EXPECT_EQ(HexOf(image, 9, 4), "00 54 41 4C");
    EXPECT_EQ(HexOf(image, 27, 6), "53 00 41 42 21 00");
}

TEST(ImageBuilder, PadsTheBinaryHeadersTexts) {
    const Bytes image = ImageBuilder(100).BinaryHeader("A", "B", 2, 7, 'G').Build();
    EXPECT_EQ(HexOf(image, 12, 5), "02 07 01 41 00");
    EXPECT_EQ(HexOf(image, 34, 3), "00 42 00");
    EXPECT_EQ(HexOf(image, 54, 1), "00");
    EXPECT_EQ(HexOf(image, 75, 1), "47");
}

TEST(ImageBuilder, PutsLengthAndCrcHighestByteFirst) {
    const Bytes image = ImageBuilder(0x12345).OwnLength().Build();
    EXPECT_EQ(HexOf(image, 4, 4), "00 01 23 45");
    EXPECT_EQ(HexOf(ImageBuilder(13).Text(0, "123456789").Crc().Build(), 9, 4), "CB F4 39 26");
}

TEST(ImageBuilder, LeavesOutWhatLiesPastTheEnd) {
    EXPECT_EQ(HexOf(ImageBuilder(6).Text(4, "ABCD").Byte(6, 1).Build(), 4, 2), "41 42");
    EXPECT_TRUE(ImageBuilder(0).TypeCode("C0DE0149").OwnLength().Crc().Build().empty());
}

}  // namespace burnwick::test
