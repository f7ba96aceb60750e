#include "image/Languages.h"

#include <gmock/gmock.h>

#include <cctype>
#include <string>
#include <utility>

namespace burnwick::test {

using modBinFileInfo::LanguageFromLetter;
using modBinFileInfo::WithEnglish;

class LanguageLetter : public testing::TestWithParam<std::pair<char, const char*>> {};

TEST_P(LanguageLetter, StandsForItsLanguageInBothCases) {
    const auto& [letter, name] = GetParam();
    EXPECT_EQ(LanguageFromLetter(letter), name);
    EXPECT_EQ(LanguageFromLetter(static_cast<char>(std::tolower(letter))), name);
}

INSTANTIATE_TEST_SUITE_P(Table, LanguageLetter,
                         testing::Values(std::pair('D', "Danish"), std::pair('N', "Finnish"),
                                         std::pair('F', "French"), std::pair('G', "German"),
                                         std::pair('I', "Italian"), std::pair('P', "Polish"),
                                         std::pair('R', "Russian"), std::pair('S', "Spanish"),
                                         std::pair('E', "English")));

TEST(LanguageLetters, AreNineOfAllCharactersOfEitherCase) {
    int letters = 0;
    for (int character = 0; character < 256; ++character) {
        letters += LanguageFromLetter(static_cast<char>(character)) != "N/A" ? 1 : 0;
    }
    EXPECT_EQ(letters, 2 * 9);
}

TEST(LanguageLetters, AreNoneForDutchAndSlovak) {
    for (int character = 0; character < 256; ++character) {
        const auto language = LanguageFromLetter(static_cast<char>(character));
        EXPECT_NE(language, "Dutch");
        EXPECT_NE(language, "Slovak");
    }
}

TEST(LanguageLetters, OtherThanTheTablesGiveNotAvailable) {
    for (const char letter : {'A', 'Z', '\0', '/', '\xC4', '\xE9'}) {
        EXPECT_EQ(LanguageFromLetter(letter), "N/A") << static_cast<int>(letter);
    }
}

TEST(SecondLanguage, StandsBehindEnglish) {
    for (const char* name : {"Danish", "Dutch", "Finnish", "French", "German", "Italian", "Polish", "Russian",
                             "Slovak", "Spanish"}) {
        EXPECT_EQ(WithEnglish(name), "English/" + std::string(name));
    }
}

TEST(SecondLanguage, ThatIsNoneLeavesEnglish) {
    for (const char* name : {"English", "N/A", "", "Klingon", "french", "French ", "Frenc"}) {
        EXPECT_EQ(WithEnglish(name), "English") << name;
    }
}

}  // namespace burnwick::test
