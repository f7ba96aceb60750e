#include "settings/IniText.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

namespace burnwick {
namespace {

using namespace std::string_literals;

std::string Read(std::string text, std::string_view section, std::string_view key) {
    return IniText(std::move(text)).Value(section, key).value_or("(none)");
}

std::string Changed(std::string text, std::string_view section, std::string_view key,
                    std::string_view value) {
    IniText ini(std::move(text));
    EXPECT_TRUE(ini.SetValue(section, key, value));
    return ini.Text();
}

TEST(IniText, ComparesNamesWithoutRegardToCase) {
    const auto text = "[comPORT]\nBAUDrate=1\n"s;
    EXPECT_EQ(Read(text, "COMPort", "BaudRate"), "1");
    EXPECT_EQ(Changed(text, "COMPort", "BaudRate", "0"), "[comPORT]\nBAUDrate=0\n");
    EXPECT_EQ(Read("[j\xC3\x84ger]\nk=1\n", "j\xC3\xA4ger", "k"), "(none)") << "ASCII letters only";
}

TEST(IniText, PassesOverBlanksAroundNamesAndValues) {
    const auto text = "\t [ COMPort ] \n \tCOM\t =\t 3 \t\n"s;
    EXPECT_EQ(Read(text, "COMPort", "COM"), "3");
    EXPECT_EQ(Read(text, " COMPort\t", "\tCOM "), "3");
    EXPECT_EQ(Changed(text, "COMPort", "COM", "12"), "\t [ COMPort ] \n \tCOM\t =\t 12 \t\n");
}

TEST(IniText, PassesOverComments) {
    const auto text = "; [A]\n[A]\n;k=1\n # k=2\nk=3 ; no comment\n"s;
    EXPECT_EQ(Read(text, "A", "k"), "3 ; no comment");
    EXPECT_EQ(Read(text, "A", ";k"), "(none)");
}

TEST(IniText, TakesTheFirstOfTwoKeys) {
    const auto text = "[A]\nk=1\nk=2\n"s;
    EXPECT_EQ(Read(text, "A", "k"), "1");
    EXPECT_EQ(Changed(text, "A", "k", "3"), "[A]\nk=3\nk=2\n");
}

TEST(IniText, TakesTheFirstOfTwoSectionsThatHoldsTheKey) {
    const auto text = "[A]\nx=1\n[B]\nk=8\n[A]\nk=2\n[A]\nk=3\n"s;
    EXPECT_EQ(Read(text, "A", "k"), "2");
    EXPECT_EQ(Changed(text, "A", "k", "9"), "[A]\nx=1\n[B]\nk=8\n[A]\nk=9\n[A]\nk=3\n");
    EXPECT_EQ(Changed(text, "A", "new", "9"), "[A]\nx=1\nnew=9\n[B]\nk=8\n[A]\nk=2\n[A]\nk=3\n");
}

TEST(IniText, TakesOnePairOfQuotesOff) {
    for (const auto& [stored, value] : {std::pair{R"(" 3 ")", " 3 "},
                                        {"'3'", "3"},
                                        {R"(""3"")", R"("3")"},
                                        {"\"3'", "\"3'"},
                                        {"\"", "\""},
                                        {"\"\"", ""},
                                        {"3\"", "3\""}}) {
        EXPECT_EQ(Read("[A]\nk="s + stored + "\n", "A", "k"), value) << stored;
    }
}

TEST(IniText, WritesEveryValueSoThatItReadsBackTheSame) {
    for (const auto* value : {"",
                              "3",
                              " 3",
                              "3 ",
                              "\t3\t",
                              " ",
                              "\"",
                              "\"\"",
                              "'",
                              "\"a\" b",
                              "a \"b\"",
                              "'a'",
                              "[x]",
                              "k=v",
                              "; no comment",
                              "&All",
                              "/home/anna/my images",
                              "C:\\images",
                              "j\xC3\xBCrgen",
                              "\xFF\xFE",
                              "a\x1A\x7F",
                              "\xEF\xBB\xBF"}) {
        const auto text = Changed("[A]\nk=old\nx=1\n", "A", "k", value);
        EXPECT_EQ(Read(text, "A", "k"), value);
        EXPECT_EQ(Read(text, "A", "x"), "1");
    }
    EXPECT_EQ(Changed("[A]\nk=old\n", "A", "k", "my images"), "[A]\nk=my images\n") << "no idle quotes";
    EXPECT_EQ(Changed("[A]\nk=old\n", "A", "k", "images "), "[A]\nk=\"images \"\n");
}

TEST(IniText, WritesBreaksInAValueOrNameAsBlanks) {
    EXPECT_EQ(Changed("", "A", "k", "1\r\n[B]\nx=2\0"s), "[A]\r\nk=\"1  [B] x=2 \"\r\n");
    EXPECT_EQ(Changed("", "A\n]"s.substr(0, 2) + "B", "k\rl\0m"s, "1"), "[A B]\r\nk l m=1\r\n");
    EXPECT_EQ(Read("[A B]\r\nk l m=1\r\n", "A\nB", "k\rl\0m"s), "1");
}

TEST(IniText, KnowsNoNameThatCouldNotBeFoundAgain) {
    for (const auto& [section, key] : {std::pair{"", "k"},
                                       {" \n", "k"},
                                       {"A]", "k"},
                                       {"A", ""},
                                       {"A", "k=l"},
                                       {"A", ";k"},
                                       {"A", " #k"},
                                       {"A", "[k"}}) {
        IniText ini("[A]\nx=1\n=2\n[]\nk=3\n");
        EXPECT_FALSE(ini.SetValue(section, key, "9")) << section << '/' << key;
        EXPECT_EQ(ini.Text(), "[A]\nx=1\n=2\n[]\nk=3\n");
        EXPECT_EQ(ini.Value(section, key), std::nullopt);
    }
}

TEST(IniText, ChangesNothingWhenTheValueIsThere) {
    IniText ini("[A]\nk = '1' \n");
    EXPECT_FALSE(ini.SetValue("a", "K", "1"));
    EXPECT_EQ(ini.Text(), "[A]\nk = '1' \n");
}

TEST(IniText, AddsAnEmptyValueThatIsNotThere) {
    EXPECT_EQ(Changed("[A]\n", "A", "k", ""), "[A]\nk=\n");
    EXPECT_EQ(Changed("[A]\nk=  \n", "A", "k", "1"), "[A]\nk=1  \n");
}

TEST(IniText, BeginsAFileWithTheUsualLineEnds) {
    EXPECT_EQ(Changed("", "A", "k", "1"), "[A]\r\nk=1\r\n");
    EXPECT_EQ(Changed("\xEF\xBB\xBF", "A", "k", "1"), "\xEF\xBB\xBF[A]\r\nk=1\r\n");
}

TEST(IniText, AddsAKeyBehindTheLastLineOfItsSectionThatIsNotBlank) {
    EXPECT_EQ(Changed("[A]\nx=1\n; end\n\n \n[B]\nk=1\n", "A", "k", "2"),
              "[A]\nx=1\n; end\nk=2\n\n \n[B]\nk=1\n");
    EXPECT_EQ(Changed("[A]\n\n[B]\n", "A", "k", "2"), "[A]\nk=2\n\n[B]\n");
    EXPECT_EQ(Changed("[B]\n[A]\nnoise\n\n", "A", "k", "2"), "[B]\n[A]\nnoise\nk=2\n\n");
}

TEST(IniText, AddsASectionAtTheEndAfterABlankLine) {
    EXPECT_EQ(Changed("[A]\nx=1\n", "B", "k", "2"), "[A]\nx=1\n\n[B]\nk=2\n");
    EXPECT_EQ(Changed("[A]\nx=1\n\n", "B", "k", "2"), "[A]\nx=1\n\n[B]\nk=2\n") << "one is enough";
}

TEST(IniText, KeepsTheLineEndsOfTheFile) {
    EXPECT_EQ(Changed("[A]\r\nx=1\r\n", "A", "k", "2"), "[A]\r\nx=1\r\nk=2\r\n");
    EXPECT_EQ(Changed("[A]\rx=1\r", "A", "k", "2"), "[A]\rx=1\rk=2\r");
    EXPECT_EQ(Changed("[A]\rx=1\r", "B", "k", "2"), "[A]\rx=1\r\r[B]\rk=2\r");
    EXPECT_EQ(Changed("[A]\nx=1\r\n\n\r[B]\r", "A", "k", "2"), "[A]\nx=1\r\nk=2\r\n\n\r[B]\r");
}

TEST(IniText, TakesAMissingLastLineEndAsItIs) {
    EXPECT_EQ(Changed("[A]\nk=1", "A", "k", "2"), "[A]\nk=2");
    EXPECT_EQ(Changed("[A]\nx=1", "A", "k", "2"), "[A]\nx=1\nk=2\n");
    EXPECT_EQ(Changed("[A]\nx=1", "B", "k", "2"), "[A]\nx=1\n\n[B]\nk=2\n");
    EXPECT_EQ(Changed("[A]", "A", "k", "2"), "[A]\r\nk=2\r\n");
    EXPECT_EQ(Changed("noise", "A", "k", "2"), "noise\r\n\r\n[A]\r\nk=2\r\n");
    EXPECT_EQ(Changed("[A]\n ", "B", "k", "2"), "[A]\n \n[B]\nk=2\n");
}

TEST(IniText, ReadsASectionBehindAByteOrderMark) {
    const auto text = "\xEF\xBB\xBF[A]\r\nk=1\r\n"s;
    EXPECT_EQ(Read(text, "A", "k"), "1");
    EXPECT_EQ(Changed(text, "A", "k", "2"), "\xEF\xBB\xBF[A]\r\nk=2\r\n");
}

TEST(IniText, LeavesEveryOtherByteAsItIs) {
    const auto before =
        "\xEF\xBB\xBF; mine\r\n\r\n[Foreign]\nkey without end\0\0\r"s + "=\n[\n]\n[A]  trailing\r\n\tk =\t"s;
    const auto after = " \t\r\n\xFF\xFE noise \x01\r\r\n[[A]]\n[a]\nk=other\n\0"s;
    EXPECT_EQ(Changed(before + "'old'" + after, "A", "k", "new"), before + "new" + after);
}

TEST(IniText, TakesABrokenHeaderForNoise) {
    const auto text = "[A]\nx=1\n[B\ny=2\nB]\nz=3\n"s;
    EXPECT_EQ(Read(text, "A", "y"), "2");
    EXPECT_EQ(Read(text, "A", "z"), "3");
    EXPECT_EQ(Read(text, "B", "y"), "(none)");
    EXPECT_EQ(Read("k=1\n[A]\n", "A", "k"), "(none)");
}

TEST(IniText, ReadsANulInAValueAsABlank) {
    EXPECT_EQ(Read("[A]\nk=/home\0/x\n"s, "A", "k"), "/home /x");
    EXPECT_EQ(Read("[A]\nk\0=1\n"s, "A", "k"), "(none)");
}

// A reader that searches each line from its start again takes hours for this, and the test runner ends it.
TEST(IniText, GoesThroughTenMegabytesOfNoiseOnce) {
    constexpr std::size_t size = 10'000'000;
    for (const auto& line : {std::string(size, 'x'), std::string(size, ' '), std::string(size, '\0'),
                             std::string(200, 'x') + '\r', "[A]\n"s + std::string(200, '"') + '\n'}) {
        std::string noise;
        noise.reserve(size + line.size());
        while (noise.size() < size) {
            noise += line;
        }
        IniText ini(noise);
        EXPECT_EQ(ini.Value("A", "k"), std::nullopt);
        EXPECT_TRUE(ini.SetValue("A", "k", "1"));
        EXPECT_EQ(ini.Value("A", "k"), "1");
    }
    IniText breaks(std::string(size / 10, '\r'));
    EXPECT_EQ(breaks.Value("A", "k"), std::nullopt);
}

}  // namespace
}  // namespace burnwick
