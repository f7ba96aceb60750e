#include <gmock/gmock.h>

#include <string>

#include "image/MemoryImage.h"

// What an image with a header text behind the maker's name tells.
namespace burnwick::test {

namespace {

constexpr std::size_t SignatureAt = 500;
constexpr std::size_t HeaderTextAt = SignatureAt + 19;

const std::string Created = "Created:07/22/2004 15:05:09 ";

ImageBuilder Plain(std::size_t size = KiB128) {
    return ImageBuilder(size).TypeCode("C0DE0000").SecondTypeCode("00000000").Signature(SignatureAt);
}

ImageBuilder With(const std::string& headerText) {
    return Plain().HeaderText(headerText);
}

}  // namespace

TEST(HeaderText, TellsTheDateInThe19CharactersBehindCreated) {
    EXPECT_EQ(InfoOf(With("Created:07/22/2004 15:05:09trailing")).DateStamp, "07/22/2004 15:05:09");
}

TEST(HeaderText, TellsWhereTheSignatureStands) {
    EXPECT_EQ(InfoOf(With(Created)).SignaturePos, static_cast<int>(SignatureAt));
}

TEST(HeaderText, EndsBeforeAnExclamationMark) {
    EXPECT_EQ(InfoOf(With("Created:07/22!2004 15:05:09")).DateStamp, "07/22");
}

TEST(HeaderText, MayHaveItsFieldsInAnyOrder) {
    const auto info = InfoOf(With("Model:VX< Version:4.10 Created:07/22/2004 15:05:09 Filename:A1234F.BIN "));
    EXPECT_EQ(info.DateStamp, "07/22/2004 15:05:09");
    EXPECT_EQ(info.Version, "4.10");
    EXPECT_EQ(info.Model, "VX");
    EXPECT_EQ(info.ImageFileName, "A1234F.BIN");
}

TEST(HeaderText, Has101CharactersAtMost) {
    // "Created:" ends with the last one, and then begins one too late.
    EXPECT_EQ(InfoOf(With("Version:4.10" + std::string(81, '.') + "Created:")).Version, "4.10");
    EXPECT_EQ(InfoOf(With("Version:4.10" + std::string(82, '.') + "Created:")).Version, "....");
}

TEST(HeaderText, OfMoreThan101CharactersIsCut) {
    const std::string text = Created + std::string(60, '.') + "Filename:";
    EXPECT_EQ(InfoOf(With(text + "ABCDEFGH")).ImageFileName, "ABC");
}

TEST(HeaderText, WithoutCreatedIsNone) {
    const auto info = InfoOf(With("Version:4.10 Model:VX-1600< Filename:VX16410F.BIN "));
    EXPECT_EQ(info.DateStamp, "Version:4.10 Model:VX-16");
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.Language, "English");
}

TEST(HeaderText, WithCreatedBehindItsEndIsNone) {
    EXPECT_EQ(InfoOf(With("Version:4.10!Created:07/22/2004 15:05:09")).DateStamp, "Version:4.10");
}

TEST(HeaderText, IsCutByTheBuffersEnd) {
    const auto info = InfoOf(ImageBuilder(HeaderTextAt + 12)
                                 .TypeCode("C0DE0000")
                                 .Signature(SignatureAt)
                                 .HeaderText("Created:07/22/2004 15:05:09"));
    EXPECT_EQ(info.DateStamp, "07/2");
    EXPECT_EQ(info.Version, "N/A");
}

TEST(HeaderText, OfAFileOf64KiBIsNotLookedFor) {
    const auto info =
        InfoOf(Plain(KiB64).HeaderText(Created + "Version:4.10 Model:VX< Filename:VX16410F.BIN "));
    EXPECT_EQ(info.SignaturePos, 0);
    EXPECT_EQ(info.DateStamp, "N/A");
    EXPECT_EQ(info.Version, "N/A");
    EXPECT_EQ(info.Model, "N/A");
    EXPECT_EQ(info.Language, "N/A");
    EXPECT_EQ(info.ImageFileName, "N/A");
}

TEST(HeaderText, OfFilesNextTo64KiBIsRead) {
    for (const std::size_t size : {KiB64 - 1, KiB64 + 1}) {
        EXPECT_EQ(InfoOf(Plain(size).HeaderText(Created)).DateStamp, "07/22/2004 15:05:09") << size;
    }
}

TEST(HeaderText, OfASecondPartIsReadRelativeToIt) {
    const auto info = InfoOf(ImageBuilder(KiB128)
                                 .TypeCode("C0DE0123")
                                 .SecondTypeCode("C0DE0001")
                                 .Signature(0x10000 + 7)
                                 .HeaderText(Created + "Version:4.10 "));
    EXPECT_EQ(info.SignaturePos, 7);
    EXPECT_EQ(info.DateStamp, "07/22/2004 15:05:09");
    EXPECT_EQ(info.Version, "4.10");
}

TEST(HeaderVersion, IsFourCharactersUntrimmed) {
    EXPECT_EQ(InfoOf(With(Created + "Version: 4.1 Model:")).Version, " 4.1");
    EXPECT_EQ(InfoOf(With(Created + "Version:10.25")).Version, "10.2");
}

TEST(HeaderVersion, IsCutByTheTextsEnd) {
    EXPECT_EQ(InfoOf(With(Created + "Version:4.")).Version, "4.");
    EXPECT_EQ(InfoOf(With(Created + "Version:")).Version, "");
}

TEST(HeaderVersion, WithoutItsMarkerIsNotAvailable) {
    EXPECT_EQ(InfoOf(With(Created + "VER5.55 ")).Version, "N/A");
}

TEST(HeaderVersion, IsNotThatOfAKindWithVersionBytes) {
    const auto info = InfoOf(ImageBuilder(KiB128)
                                 .TypeCode("C0DE0137")
                                 .Signature(SignatureAt)
                                 .HeaderText(Created + "Version:4.10 Model:VX-1600<")
                                 .Byte(8064, 3)
                                 .Byte(8065, 7));
    EXPECT_EQ(info.Version, "3.07");
    EXPECT_EQ(info.DateStamp, "07/22/2004 15:05:09");
    EXPECT_EQ(info.Model, "VX-1600");
}

TEST(HeaderModel, EndsBeforeItsBracket) {
    EXPECT_EQ(InfoOf(With(Created + "Model:VX-1600<rest")).Model, "VX-1600");
}

TEST(HeaderModel, IsAllThatStandsRightBehindItsMarker) {
    EXPECT_EQ(InfoOf(With(Created + "Model: VX <rest")).Model, " VX ");
}

TEST(HeaderModel, LosesEveryClosingBracket) {
    EXPECT_EQ(InfoOf(With(Created + "Model:>VX>-16>>00<")).Model, "VX-1600");
}

TEST(HeaderModel, IsLookedForIn51PlacesClosingBracketsIncluded) {
    EXPECT_EQ(InfoOf(With(Created + "Model:" + std::string(60, 'M'))).Model, std::string(51, 'M'));
    EXPECT_EQ(InfoOf(With(Created + "Model:>" + std::string(60, 'M'))).Model, std::string(50, 'M'));
}

TEST(HeaderModel, GoesOnBehindTheHeaderTextsEnd) {
    EXPECT_EQ(InfoOf(With(Created + "Model:VX!16<")).Model, "VX!16");
}

TEST(HeaderModel, ThatIsEmptyStaysEmpty) {
    EXPECT_EQ(InfoOf(With(Created + "Model:<")).Model, "");
}

TEST(HeaderModel, WithoutItsMarkerIsNotAvailable) {
    EXPECT_EQ(InfoOf(With(Created)).Model, "N/A");
}

TEST(HeaderModel, IsCutByTheBuffersEnd) {
    const std::string text = Created + "Model:VX-16";
    const auto info = InfoOf(ImageBuilder(HeaderTextAt + text.size())
                                 .TypeCode("C0DE0000")
                                 .Signature(SignatureAt)
                                 .HeaderText(text));
    EXPECT_EQ(info.Model, "VX-16");
}

TEST(HeaderFileName, IsTheRestOfTheTextLessItsLastCharacter) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410F.BIN ")).ImageFileName, "VX16410F.BIN");
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410F.BIN")).ImageFileName, "VX16410F.BI");
    EXPECT_EQ(InfoOf(With(Created + "Filename: A B ")).ImageFileName, " A B");
    EXPECT_EQ(InfoOf(With(Created + "Filename:N/A")).ImageFileName, "N/");
}

TEST(HeaderFileName, ThatIsEmptyStaysEmpty) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:")).ImageFileName, "");
    EXPECT_EQ(InfoOf(With(Created + "Filename: ")).ImageFileName, "");
}

TEST(HeaderFileName, WithoutItsMarkerIsNotAvailable) {
    EXPECT_EQ(InfoOf(With(Created)).ImageFileName, "N/A");
}

TEST(HeaderLanguage, IsTheLetterBeforeTheFileNamesExtension) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410F.BIN ")).Language, "English/French");
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410s.bin ")).Language, "English/Spanish");
}

TEST(HeaderLanguage, OfAnotherLetterIsEnglish) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410E.BIN ")).Language, "English");
    EXPECT_EQ(InfoOf(With(Created + "Filename:VX16410X.BIN ")).Language, "English");
}

TEST(HeaderLanguage, OfANameOfFiveCharactersIsItsFirst) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:G.BIN ")).Language, "English/German");
}

TEST(HeaderLanguage, OfAShortNameIsEnglish) {
    EXPECT_EQ(InfoOf(With(Created + "Filename:.BIN ")).Language, "English");
    EXPECT_EQ(InfoOf(With(Created + "Filename:")).Language, "English");
}

TEST(HeaderLanguage, WithoutAFileNameIsEnglish) {
    EXPECT_EQ(InfoOf(With(Created)).Language, "English");
}

TEST(HeaderLanguage, IsCountedInBytesBeforeTheTextIsConverted) {
    // Five characters of one byte each; as UTF-8 they are ten.
    const auto info = InfoOf(With(Created + "Filename:F\xC4\xD6\xDC\xDF "));
    EXPECT_EQ(info.Language, "English/French");
    EXPECT_EQ(info.ImageFileName, "F\xC3\x84\xC3\x96\xC3\x9C\xC3\x9F");
}

TEST(HeaderLanguage, GoesBeforeASecondLanguageElsewhere) {
    const auto info =
        InfoOf(With(Created + "Filename:VX16410F.BIN ").Text(2000, std::string("English/German\0", 15)));
    EXPECT_EQ(info.Language, "English/French");
}

}  // namespace burnwick::test
