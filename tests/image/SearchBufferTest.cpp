#include "image/SearchBuffer.h"

#include <gmock/gmock.h>

namespace burnwick::test {

using modBinFileInfo::SearchBuffer;

TEST(FindText, GivesTheFirstPlaceOfAText) {
    EXPECT_EQ(SearchBuffer("..VER1.VER2").FindText("VER"), 2);
}

TEST(FindText, GivesZeroForATextThatIsNowhere) {
    EXPECT_EQ(SearchBuffer("..VEr..").FindText("VER"), 0);
    EXPECT_EQ(SearchBuffer("").FindText("VER"), 0);
}

TEST(FindText, TakesATextAtTheVeryBeginningForAbsent) {
    EXPECT_EQ(SearchBuffer("VER1.00").FindText("VER"), 0);
    // Also when it stands a second time further on.
    EXPECT_EQ(SearchBuffer("VER1.00 VER2.00").FindText("VER"), 0);
}

TEST(FindText, GoesOnBehindALikeBeginning) {
    EXPECT_EQ(SearchBuffer(".VEVEVER").FindText("VER"), 5);
}

TEST(FindText, FindsATextThatEndsWithTheBuffer) {
    EXPECT_EQ(SearchBuffer("....VER").FindText("VER"), 4);
}

TEST(FindText, DoesNotFindATextThatTheEndCuts) {
    EXPECT_EQ(SearchBuffer("....VE").FindText("VER"), 0);
}

TEST(FindText, GivesTheHighestPositionThereIs) {
    EXPECT_EQ(SearchBuffer(std::string(32'764, '.') + "VER").FindText("VER"), 32'764);
}

TEST(SearchBuffer, KeepsNoMoreThan32767Bytes) {
    const SearchBuffer buffer(std::string(40'000, 'x'));
    EXPECT_EQ(buffer.ByteAt(32'766), 'x');
    EXPECT_EQ(buffer.ByteAt(32'767), 0);
}

TEST(SearchBuffer, ReadsZeroPastItsEnd) {
    const SearchBuffer buffer("\xFF");
    EXPECT_EQ(buffer.ByteAt(0), 0xFF);
    EXPECT_EQ(buffer.ByteAt(1), 0);
    EXPECT_EQ(SearchBuffer("").ByteAt(0), 0);
}

TEST(SearchBuffer, StopsATextAtItsEnd) {
    const SearchBuffer buffer("abcdef");
    EXPECT_EQ(buffer.TextAt(4, 10), "ef");
    EXPECT_EQ(buffer.TextAt(6, 10), "");
    EXPECT_EQ(buffer.TextAt(100, 10), "");
    EXPECT_EQ(buffer.TextUntil('!', 4, 10), "ef");
}

TEST(SearchBuffer, StopsATextBeforeItsEndCharacter) {
    const SearchBuffer buffer("abc!def");
    EXPECT_EQ(buffer.TextUntil('!', 1, 6), "bc");
    EXPECT_EQ(buffer.TextUntil('!', 3, 4), "");
}

TEST(SearchBuffer, StopsATextAtItsGreatestLength) {
    const SearchBuffer buffer("abc!def");
    EXPECT_EQ(buffer.TextAt(0, 5), "abc!d");
    EXPECT_EQ(buffer.TextUntil('!', 0, 2), "ab");
}

}  // namespace burnwick::test
