#include <gmock/gmock.h>

#include <string>

#include "image/MemoryImage.h"
#include "image/TypeCodes.h"

// Files that were never images.
namespace burnwick::test {

namespace {

bool IsAccepted(const Bytes& image) {
    MemoryImage memory(image);
    return modBinFileInfo::IsImage(memory.Source());
}

Bytes Filled(std::size_t size, unsigned value) {
    return ImageBuilder(size).Fill(value).Build();
}

}  // namespace

TEST(OddImage, ThatIsEmptyTellsNothing) {
    const auto info = InfoOf(Bytes{});
    EXPECT_EQ(info.Checksum, "0");
    EXPECT_EQ(info.FileSize, "00KB");
    EXPECT_EQ(info.TypeSuffix, "");
    EXPECT_EQ(info.ImageKind, 0);
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.ImageFileName, "N/A");
    // What is missing counts as 0, and so both copies of the type code are alike.
    EXPECT_EQ(info.ImageFamily, 2);
    EXPECT_EQ(info.Language, "N/A");
}

TEST(OddImage, OfUpTo20BytesOfAnyKindIsRead) {
    for (std::size_t size = 0; size <= 20; ++size) {
        for (const char* code : {"C0DE0000", "BC0DE122", "BC0DE131", "C0DE0137", "C0DE0149", "BC0DE157"}) {
            const auto info = InfoOf(ImageBuilder(size).TypeCode(code));
            EXPECT_EQ(info.FileSize, "00KB");
            EXPECT_EQ(info.SignaturePos, 0);
            EXPECT_FALSE(info.Checksum.empty());
            EXPECT_EQ(IsAccepted(ImageBuilder(size).TypeCode(code).Build()), size >= 4)
                << code << ' ' << size;
        }
    }
}

TEST(OddImage, OfAllZerosIsOneOfSeveralParts) {
    const auto info = InfoOf(Filled(MiB, 0));
    EXPECT_EQ(info.ImageFamily, 2);
    EXPECT_EQ(info.ImageKind, 0);
    EXPECT_EQ(info.Checksum, "0");
    EXPECT_EQ(info.TypeSuffix, "0000");
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.Language, "N/A");
    EXPECT_EQ(info.FileSize, "1,024KB");
}

TEST(OddImage, OfErasedFlashTellsNothing) {
    const auto info = InfoOf(Filled(MiB, 0xFF));
    EXPECT_EQ(info.ImageFamily, 2);
    EXPECT_EQ(info.ImageKind, 0);
    EXPECT_EQ(info.Checksum, "FF00000");
    EXPECT_EQ(info.TypeSuffix, "FFFF");
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Version, "N/A");
}

TEST(OddImage, OfOneValueIsAcceptedOfExactly64KiBOnly) {
    for (const unsigned value : {0U, 0xFFU}) {
        EXPECT_TRUE(IsAccepted(Filled(KiB64, value)));
        EXPECT_FALSE(IsAccepted(Filled(KiB64 - 1, value)));
        EXPECT_FALSE(IsAccepted(Filled(MiB, value)));
    }
}

TEST(OddImage, MadeOfMarkersOnlyIsRead) {
    for (const char* marker : {"TALLOW ELECTRONICS", "Created:", "VER", "Ver", "English", "Filename:"}) {
        std::string text;
        while (text.size() < KiB64 + 40'000) {
            text += marker;
        }
        for (const std::size_t size :
             std::initializer_list<std::size_t>{10, 100, 1000, 32'767, KiB64, KiB64 + 40'000}) {
            EXPECT_EQ(InfoOf(ImageBuilder(size).Text(0, text)).ImageKind, 0) << marker << ' ' << size;
            EXPECT_EQ(InfoOf(ImageBuilder(size).Text(0, "." + text)).ImageKind, 0) << marker << ' ' << size;
        }
    }
}

TEST(OddImage, CutAnywhereBehindItsSignatureIsRead) {
    for (std::size_t size = 95; size < 260; ++size) {
        const auto info =
            InfoOf(ImageBuilder(size)
                       .TypeCode("C0DE0000")
                       .Signature(100)
                       .HeaderText(
                           "Created:07/22/2004 15:05:09 Version:4.10 Model:VX-1600< Filename:VX16410F.BIN "));
        EXPECT_EQ(info.SignaturePos, size >= 118 ? 100 : 0) << size;
        EXPECT_EQ(info.Model == "VX-1600", size >= 100 + 19 + 54) << size;
    }
}

}  // namespace burnwick::test
