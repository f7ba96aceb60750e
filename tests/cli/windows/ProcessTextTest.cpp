#include "platform/process/ProcessText.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace burnwick::test {

TEST(EnvironmentText, IsUtf8WhateverTheSystemsCharactersAre) {
    ASSERT_NE(SetEnvironmentVariableW(L"BURNWICK_TEST", L"C:\\\u043E\u0431\u0440\u0430\u0437\u044B \u20AC"),
              0);
    EXPECT_EQ(EnvironmentText("BURNWICK_TEST"),
              "C:\\\xD0\xBE\xD0\xB1\xD1\x80\xD0\xB0\xD0\xB7\xD1\x8B \xE2\x82\xAC");
}

TEST(EnvironmentText, IsEmptyForAVariableThatIsNotThereOrEmpty) {
    ASSERT_NE(SetEnvironmentVariableW(L"BURNWICK_TEST", L""), 0);
    EXPECT_EQ(EnvironmentText("BURNWICK_TEST"), "");
    SetEnvironmentVariableW(L"BURNWICK_TEST", nullptr);
    EXPECT_EQ(EnvironmentText("BURNWICK_TEST"), "");
}

TEST(EnvironmentText, MayBeLong) {
    const std::wstring value(30'000, L'x');
    ASSERT_NE(SetEnvironmentVariableW(L"BURNWICK_TEST", value.c_str()), 0);
    EXPECT_EQ(EnvironmentText("BURNWICK_TEST"), std::string(30'000, 'x'));
    SetEnvironmentVariableW(L"BURNWICK_TEST", nullptr);
}

}  // namespace burnwick::test
