#include "platform/process/Utf16.h"

#include <gtest/gtest.h>

#include "platform/files/Utf8Path.h"

namespace burnwick::test {

TEST(Utf16, HoldsEveryLengthOfACharacter) {
    const std::string utf8 = "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x93\xBA";  // a ü € and a television set
    const std::wstring utf16{L'a', 0xFC, 0x20AC, 0xD83D, 0xDCFA};
    EXPECT_EQ(Utf16Of(utf8), utf16);
    EXPECT_EQ(Utf8Of(utf16), utf8);
}

TEST(Utf16, HoldsTheLastCharacterThereIs) {
    EXPECT_EQ(Utf8Of(Utf16Of("\xF4\x8F\xBF\xBF")), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(Utf16Of("\xF4\x90\x80\x80").front(), wchar_t{0xFFFD});
}

TEST(Utf16, HasAMarkInThePlaceOfWhatIsNoText) {
    const std::wstring mark{0xFFFD};
    for (const char* noText : {"\xFF", "\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xE0\x80\x80", "\xF8\x88"}) {
        EXPECT_TRUE(Utf16Of(noText).starts_with(mark)) << noText;
    }
    EXPECT_EQ(Utf16Of("\xFFok"), mark + L"ok");
    EXPECT_EQ(Utf16Of("\xE2(ok"), mark + L"(ok") << "what follows is not swallowed";
}

TEST(Utf16, HoldsHalfAPair) {
    for (const std::wstring& half :
         {std::wstring{0xD83D}, std::wstring{0xDCFA}, std::wstring{0xD83D, L'x'}}) {
        EXPECT_EQ(Utf16Of(Utf8Of(half)), half);
    }
}

TEST(Utf16, HoldsNothing) {
    EXPECT_EQ(Utf16Of(""), L"");
    EXPECT_EQ(Utf8Of(L""), "");
}

TEST(Utf8Path, IsMadeOfAnyBytes) {
    EXPECT_EQ(Utf8Text(Utf8Path("j\xC3\xBCrgen.bin")), "j\xC3\xBCrgen.bin");
    EXPECT_FALSE(Utf8Path("\xFF\n<b>&").empty());
    EXPECT_TRUE(Utf8Text(Utf8Path("\xFF\n<b>&")).ends_with("\n<b>&"));
}

}  // namespace burnwick::test
