#include "log/LogText.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/process/EightBitText.h"

namespace burnwick::test {

using namespace std::string_literals;

// The lines of the log alone, without those that close it.
std::string Lines(std::string_view content) {
    const std::string text = LogText(content);
    return text.substr(0, text.rfind("=======================End of Log"));
}

// The last line.
std::string SizeLine(std::size_t bytes) {
    const std::string text = LogText(std::string(bytes, 'x'));
    return text.substr(text.rfind("Log file size: "));
}

// What older logs are written in where the system has no 8-bit characters of its own.
bool HasWesternCharacters() {
    return FromEightBit("\x80").value_or("\u20AC") == "\u20AC";
}

TEST(LogText, EndsWithTheClosingLines) {
    EXPECT_EQ(LogText("a\r\nb\r\n"),
              "a\r\nb\r\n=======================End of Log======================\r\nLog file size: 1KB.\r\n");
}

TEST(LogText, TellsASizeOf0ForExactly2048Bytes) {
    EXPECT_EQ(SizeLine(2048), "Log file size: 0KB.\r\n");
}

TEST(LogText, TellsASizeOf3For2049Bytes) {
    EXPECT_EQ(SizeLine(2049), "Log file size: 3KB.\r\n");
}

TEST(LogText, RoundsEverySizeUpThatIsNoMultipleOf1024) {
    EXPECT_EQ(LogSizeInKB(0), 0U);
    EXPECT_EQ(LogSizeInKB(1), 1U);
    EXPECT_EQ(LogSizeInKB(1023), 1U);
    EXPECT_EQ(LogSizeInKB(1024), 0U);
    EXPECT_EQ(LogSizeInKB(1025), 2U);
    EXPECT_EQ(LogSizeInKB(16'385), 17U);
}

TEST(LogText, WritesASizeWithoutThousandsSeparator) {
    EXPECT_EQ(SizeLine(1024 * 1024 + 1), "Log file size: 1025KB.\r\n");
}

TEST(LogText, EndsEveryLineWithCRLF) {
    EXPECT_EQ(Lines("a\r\nb\nc\rd"), "a\r\nb\r\nc\r\nd\r\n");
    EXPECT_EQ(Lines("\r\n\n\r \n"), "\r\n\r\n\r\n \r\n");
}

TEST(LogText, KeepsTextOfEveryLanguage) {
    EXPECT_EQ(Lines("\u00E4 \u65E5\u672C \U0001F525\r\n"), "\u00E4 \u65E5\u672C \U0001F525\r\n");
}

TEST(LogText, ReadsALineThatIsNotUtf8AsAnOlderLogsCodePage) {
    if (!HasWesternCharacters()) {
        GTEST_SKIP() << "this computer's language is written in others";
    }
    EXPECT_EQ(Lines("C:\\Ger\xE4t\\\x80.bin\r\n\u00E4\r\n"), "C:\\Ger\u00E4t\\\u20AC.bin\r\n\u00E4\r\n");
}

TEST(LogText, TakesNoBrokenCharacterForUtf8) {
    if (!HasWesternCharacters()) {
        GTEST_SKIP() << "this computer's language is written in others";
    }
    EXPECT_EQ(Lines("\xC3\r\n"), "\u00C3\r\n");
    EXPECT_EQ(Lines("\xC0\xA0\n"), "\u00C0\u00A0\r\n");
    EXPECT_EQ(Lines("\xED\xA0\xB0\n"), "\u00ED\u00A0\u00B0\r\n");
    EXPECT_EQ(Lines("\xE2\x82 \n"), "\u00E2\u201A \r\n");
    EXPECT_EQ(Lines("\xC2\x85|\x81|\xE4\r\n"), "\u00C2\u2026| |\u00E4\r\n");
    EXPECT_EQ(Lines("\xF5\xBF\xBF\xBF\n"), "\u00F5\u00BF\u00BF\u00BF\r\n");
}

TEST(LogText, ShowsControlCharactersAsBlanks) {
    EXPECT_EQ(Lines("a\0b\x1B[31m\tc\x7F\r\n"s), "a b [31m c \r\n");
    EXPECT_EQ(Lines("a\u0085b\r\n"), "a b\r\n");
}

TEST(LogText, MakesLinesOfWhateverStandsInAFile) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string content(random() % 60, ' ');
        for (char& byte : content) {
            byte = static_cast<char>(random() % 4 == 0 ? random() % 256 : 0xE0 + random() % 32);
        }
        const std::string lines = Lines(content);
        ASSERT_EQ(Lines(lines), lines) << "valid UTF-8 without control characters stays as it is";
    }
}

TEST(LogText, KeepsLinesOfAnyLength) {
    const std::string line(3'000'000, 'y');
    EXPECT_TRUE(Lines(line) == line + "\r\n");
}

TEST(NotFoundBox, TellsWhatWasLookedFor) {
    const auto box = NotFoundBox("Flash & <b>");
    EXPECT_EQ(box.Caption, "Not Found");
    EXPECT_EQ(box.Text, "Cannot find \"Flash & <b>\".");
}

TEST(NotFoundBox, TellsATextOf150CharactersWhole) {
    std::string text;
    for (int times = 0; times < 150; ++times) {
        text += "\u65E5";
    }
    EXPECT_EQ(NotFoundBox(text).Text, "Cannot find \"" + text + "\".");
}

TEST(NotFoundBox, TellsTheBeginningOfALongerText) {
    std::string text;
    for (int times = 0; times < 150; ++times) {
        text += "\u65E5";
    }
    EXPECT_EQ(NotFoundBox(text + "x").Text, "Cannot find \"" + text + "\u2026\".");
}

TEST(ClearLogQuestion, AsksWhetherTheUserIsSure) {
    const auto box = ClearLogQuestion();
    EXPECT_EQ(box.Caption, "Clear Activity Log");
    EXPECT_EQ(box.Text, "Are you sure you want to clear the activity log?");
}

}  // namespace burnwick::test
