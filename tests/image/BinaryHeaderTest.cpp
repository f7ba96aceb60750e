#include <gmock/gmock.h>

#include <string>

#include "image/MemoryImage.h"

namespace burnwick::test {

namespace {

ImageBuilder With(std::size_t size = KiB128) {
    return ImageBuilder(size).TypeCode("C0DE0149").BinaryHeader("VX-3200", "11/05/2009 09:30:00", 2, 7, 'G');
}

}  // namespace

TEST(BinaryHeader, TellsAllFourFields) {
    for (const char* code : {"BC0DE131", "C0DE0131", "BC0DE149", "C0DE0149", "BC0DE157", "C0DE0157"}) {
        const auto info = InfoOf(With().TypeCode(code));
        EXPECT_EQ(info.Model, "VX-3200") << code;
        EXPECT_EQ(info.DateStamp, "11/05/2009 09:30:00") << code;
        EXPECT_EQ(info.Version, "2.07") << code;
        EXPECT_EQ(info.Language, "German") << code;
    }
}

TEST(BinaryHeader, OfAnotherFormatLeavesTheFourFieldsEmpty) {
    for (const unsigned format : {2U, 77U, 255U}) {
        const auto info = InfoOf(With().Byte(14, format));
        EXPECT_EQ(info.HeaderFormat, format);
        EXPECT_TRUE(info.HasBinaryHeader);
        EXPECT_EQ(info.Model, "");
        EXPECT_EQ(info.DateStamp, "");
        EXPECT_EQ(info.Version, "");
        EXPECT_EQ(info.Language, "");
    }
}

TEST(BinaryHeader, TextsMayFillTheir20Characters) {
    const auto info = InfoOf(With().BinaryHeader(std::string(20, 'M'), std::string(20, 'D'), 1, 1, 'E'));
    EXPECT_EQ(info.Model, std::string(20, 'M'));
    EXPECT_EQ(info.DateStamp, std::string(20, 'D'));
}

TEST(BinaryHeader, TextsMayBeEmpty) {
    const auto info = InfoOf(With().BinaryHeader("", "", 0, 0, '\0'));
    EXPECT_EQ(info.Model, "");
    EXPECT_EQ(info.DateStamp, "");
    EXPECT_EQ(info.Version, "0.00");
    EXPECT_EQ(info.Language, "N/A");
}

TEST(BinaryHeader, TextsAreConvertedFromLatin1) {
    EXPECT_EQ(InfoOf(With().BinaryHeader("Mod\xE8le", "", 1, 0, 'E')).Model, "Mod\xC3\xA8le");
}

TEST(BinaryHeader, IsReadInAFileOf64KiBToo) {
    EXPECT_EQ(InfoOf(With(KiB64)).DateStamp, "11/05/2009 09:30:00");
    EXPECT_EQ(InfoOf(With(KiB64)).Language, "German");
}

TEST(BinaryHeader, CutByTheFilesEndTellsWhatIsThere) {
    const auto info = InfoOf(With(40));
    EXPECT_EQ(info.Model, "VX-3200");
    EXPECT_EQ(info.DateStamp, "11/05");
    EXPECT_EQ(info.Language, "N/A");
    EXPECT_EQ(InfoOf(With(17)).Model, "VX");
}

TEST(BinaryHeader, LeavesTheSignatureAlone) {
    const auto info =
        InfoOf(With().Signature(100).HeaderText("Created:01/01/2001 01:01:01 Filename:F1234F.BIN "));
    EXPECT_EQ(info.SignaturePos, 0);
    EXPECT_EQ(info.ImageFileName, "N/A");
    EXPECT_EQ(info.DateStamp, "11/05/2009 09:30:00");
}

TEST(BinaryHeader, OfKind7IsNone) {
    const auto info = InfoOf(With().TypeCode("C0DE0137").Byte(8064, 9).Byte(8065, 9));
    EXPECT_FALSE(info.HasBinaryHeader);
    EXPECT_EQ(info.Version, "9.09");
    EXPECT_EQ(info.DateStamp, "N/A");
}

}  // namespace burnwick::test
