#include <gmock/gmock.h>

#include <string>

#include "image/MemoryImage.h"

// What an image without a header text and without a binary header tells.
namespace burnwick::test {

namespace {

using namespace std::string_literals;

constexpr std::size_t SignatureAt = 500;

// Of no family and no kind.
ImageBuilder Plain(std::size_t size = KiB128) {
    return ImageBuilder(size).TypeCode("C0DE0000").SecondTypeCode("00000000");
}

// Of family 2 and no kind; its texts stand from 0 on.
ImageBuilder SmallParts() {
    return ImageBuilder(KiB64).TypeCode("C0DE0000").SecondTypeCode("C0DE0000");
}

}  // namespace

TEST(PlainImage, WithoutAnyMarkerTellsNothing) {
    const auto info = InfoOf(Plain());
    EXPECT_EQ(info.SignaturePos, 0);
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.ImageFileName, "N/A");
    EXPECT_EQ(info.Language, "English");
}

TEST(PlainImage, WithTheSignatureAtTheVeryBeginningHasNone) {
    const auto info = InfoOf(ImageBuilder(KiB128).Signature(0).HeaderText("Created:07/22/2004 15:05:09"));
    EXPECT_EQ(info.SignaturePos, 0);
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.ImageFileName, "N/A");
    EXPECT_EQ(info.Version, "N/A");
}

TEST(PlainDate, IsTheTextBehindTheSignature) {
    EXPECT_EQ(InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 19, "07/22/99!")).DateStamp,
              "07/22/99");
}

TEST(PlainDate, IsCutTo24Characters) {
    const auto info =
        InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 19, "123456789 123456789 123456!"));
    EXPECT_EQ(info.DateStamp, "123456789 123456789 1234");
}

TEST(PlainDate, ThatIsEmptyStaysEmpty) {
    EXPECT_EQ(InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 19, "!")).DateStamp, "");
}

TEST(PlainDate, IsCutByTheBuffersEnd) {
    EXPECT_EQ(
        InfoOf(Plain(SignatureAt + 22).Signature(SignatureAt).Text(SignatureAt + 19, "07/22/99")).DateStamp,
        "07/");
    EXPECT_EQ(InfoOf(Plain(SignatureAt + 18).Signature(SignatureAt)).DateStamp, "");
}

TEST(PlainDate, OfAFileOf64KiBIsNotAvailable) {
    EXPECT_EQ(InfoOf(Plain(KiB64).Signature(SignatureAt).Text(SignatureAt + 19, "07/22/99!")).DateStamp,
              "N/A");
}

TEST(PlainDate, IsConvertedFromLatin1) {
    const auto info = InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 19, "22. M\xE4rz\x80\xFF!"));
    EXPECT_EQ(info.DateStamp, "22. M\xC3\xA4rz\xC2\x80\xC3\xBF");
}

TEST(PlainVersion, IsTheSixCharactersBehindVER) {
    EXPECT_EQ(InfoOf(Plain().Text(2000, "VER12.345")).Version, "12.345");
}

TEST(PlainVersion, IsTrimmed) {
    EXPECT_EQ(InfoOf(Plain().Text(2000, "VER  4.1  ")).Version, "4.1");
    EXPECT_EQ(InfoOf(Plain().Text(2000, "VER\t4.10 ")).Version, "\t4.10");
}

TEST(PlainVersion, IsNotLookedForBehindVerExceptIn64KiB) {
    EXPECT_EQ(InfoOf(Plain().Text(2000, "Ver 4.10 ")).Version, "N/A");
}

TEST(PlainVersion, OfAFileOf64KiBIsBehindVerInFamily2) {
    EXPECT_EQ(InfoOf(SmallParts().Text(2000, "Ver 4.10 ")).Version, "4.10");
    EXPECT_EQ(InfoOf(SmallParts().Text(2000, "VER 4.10 ")).Version, "N/A");
}

TEST(PlainVersion, OfAFileOf64KiBIsNotAvailableInOtherFamilies) {
    EXPECT_EQ(InfoOf(Plain(KiB64).Text(2000, "Ver 4.10 ").Text(3000, "VER 4.10 ")).Version, "N/A");
}

TEST(PlainVersion, WithVERAtTheVeryBeginningIsNotAvailable) {
    EXPECT_EQ(InfoOf(ImageBuilder(KiB128).Text(0, "VER4.1000")).Version, "N/A");
}

TEST(PlainVersion, WithoutAPointIsThatBehindTheSignature) {
    const auto info =
        InfoOf(Plain().Text(2000, "VER123456.").Signature(SignatureAt).Text(SignatureAt + 48, "410"));
    EXPECT_EQ(info.Version, "4.10");
}

TEST(PlainVersion, WithoutVERIsThatBehindTheSignature) {
    EXPECT_EQ(InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 48, "3077")).Version, "3.07");
}

TEST(PlainVersion, BehindTheSignatureMayBeShort) {
    const auto with = [](const char* text) {
        return InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 48, text)).Version;
    };
    EXPECT_EQ(with("41!"), "4.41");
    EXPECT_EQ(with("4!"), "4.4");
    EXPECT_EQ(with("4  "), "4.");
    EXPECT_EQ(with("!"), "N/A");
}

TEST(PlainVersion, BehindTheSignatureIsCutByTheBuffersEnd) {
    const auto with = [](std::size_t characters) {
        return InfoOf(
                   Plain(SignatureAt + 48 + characters).Signature(SignatureAt).Text(SignatureAt + 48, "410"))
            .Version;
    };
    EXPECT_EQ(with(3), "4.10");
    EXPECT_EQ(with(2), "4.41");
    EXPECT_EQ(with(0), "N/A");
}

TEST(PlainVersion, CutByTheBuffersEndIsWhatThereIs) {
    EXPECT_EQ(InfoOf(Plain(1000).Text(994, "VER4.1")).Version, "4.1");
    EXPECT_EQ(InfoOf(Plain(1000).Text(997, "VER")).Version, "N/A");
}

TEST(PlainVersion, WithoutAPointInAFileOf64KiBIsNotAvailable) {
    // No signature is looked for there.
    EXPECT_EQ(
        InfoOf(SmallParts().Text(2000, "Ver410000").Signature(SignatureAt).Text(SignatureAt + 48, "410"))
            .Version,
        "N/A");
}

TEST(PlainFileName, IsTheTextAt44BehindTheSignature) {
    EXPECT_EQ(InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 44, "VX16410F.BIN!")).ImageFileName,
              "VX16410F.BIN");
}

TEST(PlainFileName, Has17CharactersAtMost) {
    EXPECT_EQ(
        InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 44, "12345678901234567890")).ImageFileName,
        "12345678901234567");
}

TEST(PlainFileName, ThatIsEmptyStaysEmpty) {
    EXPECT_EQ(InfoOf(Plain().Signature(SignatureAt).Text(SignatureAt + 44, "!")).ImageFileName, "");
}

TEST(PlainFileName, IsCutByTheBuffersEnd) {
    EXPECT_EQ(InfoOf(Plain(SignatureAt + 47).Signature(SignatureAt).Text(SignatureAt + 44, "VX16410F"))
                  .ImageFileName,
              "VX1");
}

TEST(PlainModel, OfKindZeroIsNotAvailable) {
    EXPECT_EQ(InfoOf(Plain().Text(8073, "VX-1600\0"s).Text(8066, "VX-1600\0"s)).Model, "N/A");
}

TEST(PlainModel, OfKinds3And7StandsAt8073) {
    EXPECT_EQ(InfoOf(Plain().TypeCode("BC0DE122").Text(8073, "VX-122\0"s)).Model, "VX-122");
    EXPECT_EQ(InfoOf(Plain().TypeCode("C0DE0137").Text(8073, "VX-137\0"s)).Model, "VX-137");
}

TEST(PlainModel, OfKind5StandsAt8066FromVersion404On) {
    const auto of = [](unsigned major, unsigned minor) {
        return InfoOf(Plain()
                          .TypeCode("C0DE0131")
                          .Byte(14, 0)
                          .Byte(8064, major)
                          .Byte(8065, minor)
                          .Text(8066, "newer\0"s)
                          .Text(8073, "older\0"s))
            .Model;
    };
    EXPECT_EQ(of(4, 4), "newer");
    EXPECT_EQ(of(4, 5), "newer");
    EXPECT_EQ(of(10, 0), "newer");
    EXPECT_EQ(of(4, 3), "older");
    EXPECT_EQ(of(3, 99), "older");
    EXPECT_EQ(of(0, 0), "older");
}

TEST(PlainModel, OfBootCodeOfKind5StandsAt8073) {
    // Its version is not available, and counts as 0.
    const auto info = InfoOf(
        Plain().TypeCode("BC0DE131").Byte(14, 0).Byte(8064, 9).Text(8066, "newer\0"s).Text(8073, "older\0"s));
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.Model, "older");
}

TEST(PlainModel, OfKinds8And9IsNotAvailable) {
    for (const char* code : {"C0DE0149", "C0DE0157"}) {
        const auto info = InfoOf(Plain().TypeCode(code).Byte(14, 0).Text(8073, "VX\0"s).Text(8066, "VX\0"s));
        EXPECT_EQ(info.Model, "N/A") << code;
    }
}

TEST(PlainModel, Has51CharactersAtMost) {
    EXPECT_EQ(InfoOf(Plain().TypeCode("C0DE0137").Text(8073, std::string(60, 'M'))).Model,
              std::string(51, 'M'));
}

TEST(PlainModel, ThatIsEmptyIsNotAvailable) {
    EXPECT_EQ(InfoOf(Plain().TypeCode("C0DE0137").Byte(8073, 0)).Model, "N/A");
}

TEST(PlainModel, OfAFileUpTo64KiBIsNotAvailable) {
    for (const std::size_t size : std::initializer_list<std::size_t>{20'000, KiB64}) {
        EXPECT_EQ(InfoOf(Plain(size).TypeCode("C0DE0137").Text(8073, "VX\0"s)).Model, "N/A") << size;
    }
    EXPECT_EQ(InfoOf(Plain(KiB64 + 1).TypeCode("C0DE0137").Text(8073, "VX\0"s)).Model, "VX");
}

TEST(PlainModel, IsCutByTheBuffersEnd) {
    const auto builder = [](std::size_t size) {
        return ImageBuilder(size)
            .TypeCode("BC0DE122")
            .SecondTypeCode("BC0D0000")
            .Text(0x10000 + 8073, "VX-1600");
    };
    EXPECT_EQ(InfoOf(builder(0x10000 + 8075)).Model, "VX");
    EXPECT_EQ(InfoOf(builder(0x10000 + 8073)).Model, "N/A");
}

TEST(PlainLanguage, IsTheSecondOneBehindEnglish) {
    EXPECT_EQ(InfoOf(Plain().Text(2000, "English/French\0"s)).Language, "English/French");
    EXPECT_EQ(InfoOf(Plain().Text(2000, "English/Slovak\0"s)).Language, "English/Slovak");
}

TEST(PlainLanguage, IsEnglishWithoutAKnownSecondOne) {
    EXPECT_EQ(InfoOf(Plain().Text(2000, "English/Klingon\0"s)).Language, "English");
    EXPECT_EQ(InfoOf(Plain().Text(2000, "English\0\0"s)).Language, "English");
    EXPECT_EQ(InfoOf(Plain().Text(2000, "English/French and more")).Language, "English");
}

TEST(PlainLanguage, IsEnglishWithoutEnglish) {
    EXPECT_EQ(InfoOf(Plain()).Language, "English");
}

TEST(PlainLanguage, EndsWithTheBuffer) {
    EXPECT_EQ(InfoOf(Plain(1000).Text(986, "English/French")).Language, "English/French");
    EXPECT_EQ(InfoOf(Plain(1000).Text(987, "English/French")).Language, "English");
}

TEST(PlainLanguage, OfAFileOf64KiBIsNotAvailable) {
    EXPECT_EQ(InfoOf(Plain(KiB64).Text(2000, "English/French\0"s)).Language, "N/A");
    EXPECT_EQ(InfoOf(SmallParts().Text(2000, "English/French\0"s)).Language, "N/A");
    EXPECT_EQ(InfoOf(ImageBuilder(KiB64).TypeCode("C0DE0137").Byte(8071, 'F')).Language, "N/A");
}

TEST(PlainLanguage, OfFamily2IsTheLetterAt8071AsItIs) {
    for (const char* code : {"C0DE0131", "C0DE0137", "C0DE0149", "C0DE0157"}) {
        const auto with = [code](unsigned letter) {
            return InfoOf(Plain().TypeCode(code).Byte(14, 0).Byte(8071, letter)).Language;
        };
        EXPECT_EQ(with('F'), "French") << code;
        EXPECT_EQ(with('e'), "English") << code;
        EXPECT_EQ(with('X'), "N/A") << code;
    }
}

TEST(PlainLanguage, OfFamily2IsNotAvailableInBootCode) {
    EXPECT_EQ(InfoOf(Plain().TypeCode("BC0DE137").Byte(8071, 'F')).Language, "N/A");
}

TEST(PlainLanguage, OfFamily2IsNotAvailableBelowKind4) {
    const auto builder = [](const char* code) {
        return ImageBuilder(KiB128).TypeCode(code).SecondTypeCode(code).Byte(0x10000 + 8071, 'F');
    };
    EXPECT_EQ(InfoOf(builder("C0DE0123")).Language, "N/A");
    EXPECT_EQ(InfoOf(builder("BC0DE122")).Language, "N/A");
}

TEST(PlainLanguage, OfKind3OutsideFamily2IsTheSecondOneBehindEnglish) {
    EXPECT_EQ(InfoOf(Plain().TypeCode("BC0DE122").Text(2000, "English/Polish\0"s)).Language,
              "English/Polish");
}

}  // namespace burnwick::test
