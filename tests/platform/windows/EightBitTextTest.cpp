#include "platform/process/EightBitText.h"

#include <gmock/gmock.h>

#include "ForeignText.h"
#include "log/LogText.h"
#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {
namespace {

TEST(EightBitText, IsReadInTheCharactersOfThisComputersLanguage) {
    const auto text = TextOfThisLanguage();
    if (!text) {
        GTEST_SKIP() << "no sample of the language of code page " << Child(Child::Doing(L"code-page")).Line();
    }
    EXPECT_EQ(FromEightBit("C:\\" + text->Bytes + "\\unit.bin"), "C:\\" + text->Utf8 + "\\unit.bin");
}

TEST(EightBitText, IsReadInTheLinesOfAnOlderLog) {
    const auto text = TextOfThisLanguage();
    if (!text) {
        GTEST_SKIP() << "no sample of this computer's language";
    }
    EXPECT_THAT(LogText("C:\\" + text->Bytes + "\r\nC:\\\u0417 \u6771\r\n"),
                ::testing::StartsWith("C:\\" + text->Utf8 + "\r\nC:\\\u0417 \u6771\r\n"));
}

TEST(EightBitText, MayBeEmptyOrPlain) {
    EXPECT_EQ(FromEightBit(""), "");
    EXPECT_EQ(FromEightBit("plain"), "plain");
}

TEST(EightBitText, OfAnyBytesIsText) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    const auto text = FromEightBit(bytes);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->substr(0, 128), bytes.substr(0, 128));
    EXPECT_NE(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text->data(), static_cast<int>(text->size()),
                                  nullptr, 0),
              0)
        << "valid UTF-8";
}

}  // namespace
}  // namespace burnwick::test
