#include "log/LogSearch.h"

#include <gtest/gtest.h>

#include <random>

namespace burnwick::test {

std::size_t Find(std::u16string_view text, const std::u16string& wanted, std::size_t start = 1,
                 const ToLowerCase& lower = {}, std::size_t step = 1000) {
    LogSearch search(text, wanted, start, lower);
    while (!search.Read(step)) {
    }
    return search.Found();
}

void LowerAscii(std::span<char16_t> text) {
    for (char16_t& character : text) {
        character =
            static_cast<char16_t>(character >= u'A' && character <= u'Z' ? character + 32 : character);
    }
}

TEST(LogSearch, TellsPositionsFrom1) {
    EXPECT_EQ(Find(u"Flashed", u"Fl"), 1U);
    EXPECT_EQ(Find(u"Flashed", u"ed"), 6U);
}

TEST(LogSearch, DoesNotFindFlashedByASmallLetterWhenCaseMatters) {
    EXPECT_EQ(Find(u"\r\nFlashed: ", u"flashed"), 0U);
}

TEST(LogSearch, FindsFlashedByASmallLetterWhenCaseDoesNotMatter) {
    EXPECT_EQ(Find(u"\r\nFlashed: ", u"flashed", 1, LowerAscii), 3U);
    EXPECT_EQ(Find(u"\r\nflashed: ", u"FLASHED", 1, LowerAscii), 3U);
}

TEST(LogSearch, BeginsWhereItIsTold) {
    EXPECT_EQ(Find(u"abcabc", u"abc", 1), 1U);
    EXPECT_EQ(Find(u"abcabc", u"abc", 2), 4U);
    EXPECT_EQ(Find(u"abcabc", u"abc", 4), 4U);
}

TEST(LogSearch, DoesNotGoOnAtTheBeginning) {
    EXPECT_EQ(Find(u"abcabc", u"abc", 5), 0U);
    EXPECT_EQ(Find(u"abcabc", u"abc", 7), 0U);
    EXPECT_EQ(Find(u"abcabc", u"abc", 700), 0U);
}

TEST(LogSearch, FindsPlacesThatOverlap) {
    EXPECT_EQ(Find(u"aaaa", u"aaa", 1), 1U);
    EXPECT_EQ(Find(u"aaaa", u"aaa", 2), 2U);
    EXPECT_EQ(Find(u"ababac", u"abac"), 3U);
}

TEST(LogSearch, FindsNothingThatIsLongerThanTheText) {
    EXPECT_EQ(Find(u"abc", u"abcd"), 0U);
    EXPECT_EQ(Find(u"", u"a"), 0U);
}

TEST(LogSearch, LooksForNothingByAnEmptyText) {
    LogSearch search(u"abc", u"", 1);
    EXPECT_TRUE(search.Read(1));
    EXPECT_EQ(search.Found(), 0U);
}

TEST(LogSearch, ReadsNoFurtherThanItIsTold) {
    LogSearch search(u"aaaaab", u"b", 1);
    EXPECT_FALSE(search.Read(3));
    EXPECT_FALSE(search.Read(2));
    EXPECT_TRUE(search.Read(1));
    EXPECT_EQ(search.Found(), 6U);
}

TEST(LogSearch, PartsNoPairOfHalvesBetweenTwoSteps) {
    const ToLowerCase lower = [](std::span<char16_t> text) {
        for (std::size_t i = 0; i + 1 < text.size(); ++i) {
            if (text[i] == 0xD801 && text[i + 1] == 0xDC00) {
                text[i + 1] = 0xDC28;
            }
        }
    };
    EXPECT_EQ(Find(u"ab\U00010400", u"\U00010428", 1, lower, 3), 3U);
}

TEST(LogSearch, EndsBehindHalfAPair) {
    const std::u16string text{u'a', 0xD801};
    EXPECT_EQ(Find(text, u"b", 1, {}, 1), 0U);
}

TEST(LogSearch, FindsWhatAComparisonAtEveryPositionFinds) {
    std::mt19937 random(1);
    const auto below = [&random](unsigned limit) { return random() % limit; };
    for (int round = 0; round < 3000; ++round) {
        std::u16string text(below(40), u'a');
        std::u16string wanted(1 + below(6), u'a');
        for (char16_t& character : text) {
            character = static_cast<char16_t>(u'a' + below(2));
        }
        for (char16_t& character : wanted) {
            character = static_cast<char16_t>(u'a' + below(2));
        }
        const std::size_t start = 1 + below(41);
        const auto at = start > text.size() ? std::u16string::npos : text.find(wanted, start - 1);
        const std::size_t position = at == std::u16string::npos ? 0 : at + 1;
        ASSERT_EQ(Find(text, wanted, start, {}, 1 + below(5)), position) << round;
    }
}

}  // namespace burnwick::test
