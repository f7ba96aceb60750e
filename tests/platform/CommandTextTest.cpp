#include <gtest/gtest.h>

#include "platform/process/ProcessText.h"

namespace burnwick::test {

TEST(CommandText, HasOneBlankBetweenItsWords) {
    EXPECT_EQ(CommandText({"/home/anna/my", "own  unit.bin"}), "/home/anna/my own  unit.bin");
}

TEST(CommandText, IsEmptyWithoutWords) {
    EXPECT_EQ(CommandText({}), "");
}

}  // namespace burnwick::test
