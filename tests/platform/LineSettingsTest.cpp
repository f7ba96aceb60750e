#include "platform/serial/LineSettings.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(LineSettings, AreReadFromTheirText) {
    EXPECT_EQ(ParseLineSettings("57600,N,8,1"), (LineSettings{57600, 'N', 8, 1}));
    EXPECT_EQ(ParseLineSettings("300,E,7,2"), (LineSettings{300, 'E', 7, 2}));
    EXPECT_EQ(ParseLineSettings("115200,O,5,1"), (LineSettings{115200, 'O', 5, 1}));
}

class BadLineSettings : public testing::TestWithParam<const char*> {};

TEST_P(BadLineSettings, AreRefused) {
    EXPECT_EQ(ParseLineSettings(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Texts, BadLineSettings,
                         testing::Values("", ",", ",,,", "9600", "9600,N,8", "9600,N,8,", "9600,N,8,1,",
                                         "9600,N,8,1,x", "9600,N,8,1 ", " 9600,N,8,1", "0,N,8,1",
                                         "-9600,N,8,1", "+9600,N,8,1", "9600.5,N,8,1",
                                         "99999999999999999999,N,8,1", "5000000,N,8,1", "9600,X,8,1",
                                         "9600,NN,8,1", "9600,,8,1", "9600,N,4,1", "9600,N,9,1", "9600,N,8,0",
                                         "9600,N,8,3", "fast,N,8,1"));

}  // namespace
}  // namespace burnwick
