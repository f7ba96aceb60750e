#include "image/ImageChecksum.h"

#include <gmock/gmock.h>

#include <numeric>
#include <string>

#include "image/MemoryImage.h"
#include "support/Hex.h"

namespace burnwick::test {

namespace {

using namespace modBinFileInfo;

std::string ChecksumOf(const Bytes& image, int kind) {
    MemoryImage memory(image);
    return CalcImageChecksum(memory.Source(), kind);
}

Bytes Filled(std::size_t size, unsigned value) {
    return ImageBuilder(size).Fill(value).Build();
}

}  // namespace

TEST(ByteSum, OfAnEmptyFileIsZero) {
    EXPECT_EQ(ChecksumOf({}, 0), "0");
}

TEST(ByteSum, HasUpperCaseDigitsWithoutLeadingZeros) {
    EXPECT_EQ(ChecksumOf(Filled(1, 0), 0), "0");
    EXPECT_EQ(ChecksumOf(Filled(1, 10), 0), "A");
    EXPECT_EQ(ChecksumOf(Filled(1, 0xFF), 0), "FF");
    EXPECT_EQ(ChecksumOf(Filled(0x100000, 0xFF), 0), "FF00000");
}

TEST(ByteSum, CountsEveryByteOnceWhateverTheLength) {
    for (const std::size_t size : {1UL, 4UL, 2047UL, 2048UL, 2049UL, 4095UL, 4096UL, 65'535UL, 65'536UL,
                                   65'537UL, 131'072UL, 300'001UL}) {
        const Bytes image = AnyBytes(size);
        const auto sum = std::accumulate(
            image.begin(), image.end(), 0UL,
            [](unsigned long part, std::byte value) { return part + std::to_integer<unsigned long>(value); });
        EXPECT_EQ(std::stoul(ChecksumOf(image, 0), nullptr, 16), sum) << size;
    }
}

TEST(ByteSum, IsThatOfTheKindsBelow5) {
    for (const int kind : {0, 3, 4}) {
        EXPECT_EQ(ChecksumOf(Filled(8, 1), kind), "8") << kind;
    }
}

TEST(Crc, IsThatOfAllBytesButTheLastFour) {
    MemoryImage memory(ImageBuilder(13).Text(0, "123456789....").Build());
    EXPECT_EQ(CalculateCRC32(memory.Source()), 0xCBF43926);
}

TEST(Crc, ThatTheImageCarriesIsItsChecksum) {
    Bytes image = ImageBuilder(13).Text(0, "123456789").Build();
    Put(image, 9, {0xCB, 0xF4, 0x39, 0x26});
    for (const int kind : {5, 7, 8, 9}) {
        EXPECT_EQ(ChecksumOf(image, kind), "CBF43926") << kind;
    }
}

TEST(Crc, ThatIsNotTheImagesIsShownAsZeros) {
    Bytes image = ImageBuilder(300'000).Crc().Build();
    EXPECT_NE(ChecksumOf(image, 8), "00000000");
    image[150'000] ^= std::byte{1};
    EXPECT_EQ(ChecksumOf(image, 8), "00000000");
}

TEST(Crc, InTheWrongOrderOfBytesIsShownAsZeros) {
    Bytes image = ImageBuilder(13).Text(0, "123456789").Build();
    Put(image, 9, {0x26, 0x39, 0xF4, 0xCB});
    EXPECT_EQ(ChecksumOf(image, 8), "00000000");
}

TEST(Crc, HasEightDigitsAlways) {
    // An image of nothing but its CRC, which is 0 then.
    EXPECT_EQ(ChecksumOf(Filled(4, 0), 8), "00000000");
    for (std::uint32_t seed = 1; seed < 40; ++seed) {
        EXPECT_EQ(ChecksumOf(ImageBuilder(100, seed).Crc().Build(), 9).size(), 8U);
    }
}

TEST(Crc, IsRightWhateverTheLength) {
    for (const std::size_t size :
         {5UL, 65'535UL, 65'536UL, 65'539UL, 65'540UL, 65'541UL, 131'076UL, 300'032UL}) {
        const Bytes image = ImageBuilder(size).Crc().Build();
        const std::string stored = ToHex({image.end() - 4, image.end()});
        std::string digits;
        for (const char character : stored) {
            digits += character != ' ' ? std::string(1, character) : "";
        }
        EXPECT_EQ(ChecksumOf(image, 5), digits) << size;
    }
}

TEST(Crc, OfAFileWithoutRoomForItIsZeros) {
    for (const std::size_t size : {0UL, 1UL, 3UL}) {
        EXPECT_EQ(ChecksumOf(Filled(size, 0xFF), 8), "00000000") << size;
    }
}

TEST(ChecksumShort, IsTheLastFourDigits) {
    EXPECT_EQ(InfoOf(Filled(0x100000, 0xFF)).ChecksumShort, "0000");
    const auto info = InfoOf(ImageBuilder(1000).TypeCode("C0DE0149").Crc());
    EXPECT_EQ(info.Checksum.size(), 8U);
    EXPECT_EQ(info.ChecksumShort, info.Checksum.substr(4));
}

TEST(ChecksumShort, OfAShortChecksumIsAllOfIt) {
    EXPECT_EQ(InfoOf(Filled(1, 0xFF)).ChecksumShort, "FF");
    EXPECT_EQ(InfoOf(Bytes{}).ChecksumShort, "0");
}

}  // namespace burnwick::test
