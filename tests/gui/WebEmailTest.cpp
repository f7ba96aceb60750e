#include "tools/WebEmail.h"

#include <gmock/gmock.h>

#include <vector>

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WebEmailTest : public ::testing::Test {
protected:
    bool Open(const std::string& link) {
        return WebEmail::Open(link, [this](const std::string& opened) {
            Opened.push_back(opened);
            return HasProgram;
        });
    }

    std::vector<std::string> Opened;
    bool HasProgram = true;
};

TEST_F(WebEmailTest, OpensAWebSite) {
    EXPECT_TRUE(Open("https://www.burnwick.example/"));
    EXPECT_TRUE(Open("HTTP://www.burnwick.example/a?b=c&d=%20#e"));
    EXPECT_THAT(Opened,
                ElementsAre("https://www.burnwick.example/", "HTTP://www.burnwick.example/a?b=c&d=%20#e"));
}

TEST_F(WebEmailTest, OpensAMailBox) {
    EXPECT_TRUE(Open("mailto:support@burnwick.example?subject=2.08"));
    EXPECT_THAT(Opened, ElementsAre("mailto:support@burnwick.example?subject=2.08"));
}

TEST_F(WebEmailTest, SaysWhenTheDesktopHasNoProgram) {
    HasProgram = false;
    EXPECT_FALSE(Open("https://www.burnwick.example/"));
}

TEST_F(WebEmailTest, OpensNoOtherScheme) {
    for (const char* const link :
         {"file:///etc/passwd", "ftp://host/", "javascript:alert(1)", "data:text/html,x", "vbscript:x",
          "https", "www.burnwick.example", "/usr/bin/xterm", ""}) {
        EXPECT_FALSE(Open(link)) << link;
    }
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(WebEmailTest, OpensNoAddressWithoutAPlace) {
    for (const char* const link : {"http:", "https://", "http:///path", "mailto:", "mailto:nobody"}) {
        EXPECT_FALSE(Open(link)) << link;
    }
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(WebEmailTest, OpensNothingThatAShellCouldTakeApart) {
    for (const char* const link : {"https://host/ xterm", "https://host/\nxterm", "https://host/\"x\"",
                                   "https://host/`x`", "https://host/'x'", " https://host/", "-https://host/",
                                   "https://host/\x01", "https://host/\xC3\xA9"}) {
        EXPECT_FALSE(Open(link)) << link;
    }
    EXPECT_THAT(Opened, IsEmpty());
}

}  // namespace burnwick::test
