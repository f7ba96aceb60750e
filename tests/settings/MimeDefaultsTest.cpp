#include "settings/MimeDefaults.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

constexpr auto Type = "application/x-burnwick-image";
constexpr auto Entry = "Burnwick.desktop";

const std::string Others =
    "# mine\n\n[Added Associations]\ntext/plain=vim.desktop;\n\n[Default Applications]\n"
    "text/html=firefox.desktop\nimage/png=gimp.desktop;eog.desktop;\n\n[Removed Associations]\n"
    "text/plain=ed.desktop;\n";

std::string With(const std::string& list) {
    return WithDefault(list, Type, Entry);
}

std::string Without(const std::string& list) {
    return WithoutDefault(list, Type, Entry);
}

std::string Defaults(const std::string& entries) {
    return "[Default Applications]\napplication/x-burnwick-image=" + entries + "\n";
}

TEST(MimeDefaults, OfNobodyBecomeOurs) {
    EXPECT_EQ(With(""), Defaults("Burnwick.desktop"));
    EXPECT_TRUE(IsDefault(With(""), Type, Entry));
}

TEST(MimeDefaults, OfOtherTypesStayAsTheyAre) {
    auto expected = Others;
    const std::string header = "[Default Applications]\n";
    expected.insert(expected.find(header) + header.size(), std::string(Type) + '=' + Entry + '\n');
    EXPECT_EQ(With(Others), expected);
    EXPECT_EQ(Without(expected), Others);
}

TEST(MimeDefaults, ThatAreOursAlreadyStayAsTheyAre) {
    for (const auto* const entries :
         {"Burnwick.desktop", "Burnwick.desktop;", " Burnwick.desktop ; x.desktop"}) {
        EXPECT_EQ(With(Defaults(entries)), Defaults(entries));
        EXPECT_TRUE(IsDefault(Defaults(entries), Type, Entry));
    }
}

TEST(MimeDefaults, OfOthersComeBehindOurs) {
    EXPECT_EQ(With(Defaults("hex.desktop;ed.desktop;")),
              Defaults("Burnwick.desktop;hex.desktop;ed.desktop;"));
    EXPECT_EQ(With(Defaults("hex.desktop;Burnwick.desktop;")), Defaults("Burnwick.desktop;hex.desktop;"));
}

TEST(MimeDefaults, OfOthersAreAllThatIsLeftWithoutOurs) {
    EXPECT_EQ(Without(Defaults("Burnwick.desktop;hex.desktop;")), Defaults("hex.desktop"));
    EXPECT_EQ(Without(Defaults("hex.desktop")), Defaults("hex.desktop"));
    EXPECT_EQ(Without(Defaults("Burnwick.desktop")), "[Default Applications]\n");
}

TEST(MimeDefaults, AreNotOursBehindAnother) {
    EXPECT_FALSE(IsDefault("", Type, Entry));
    EXPECT_FALSE(IsDefault(Defaults(""), Type, Entry));
    EXPECT_FALSE(IsDefault(Defaults("hex.desktop;Burnwick.desktop"), Type, Entry));
    EXPECT_FALSE(IsDefault(Defaults("xBurnwick.desktop"), Type, Entry));
    EXPECT_FALSE(
        IsDefault("[Added Associations]\n" + std::string(Type) + "=Burnwick.desktop\n", Type, Entry));
}

TEST(MimeDefaults, AreRefusedNoLongerOnceOurs) {
    const std::string refused = "[Removed Associations]\napplication/x-burnwick-image=";
    EXPECT_EQ(With(refused + "Burnwick.desktop;x.desktop;\n"),
              refused + "x.desktop\n\n" + Defaults("Burnwick.desktop"));
}

TEST(MimeDefaults, AreTakenOutOfWhatIsOfferedToo) {
    const std::string offered = "[Added Associations]\napplication/x-burnwick-image=";
    EXPECT_EQ(Without(offered + "Burnwick.desktop;x.desktop;\n"), offered + "x.desktop\n");
}

TEST(MimeDefaults, FollowTheLastOfTwoLines) {
    const auto twice = Defaults("Burnwick.desktop") + std::string(Type) + "=hex.desktop\n";
    EXPECT_FALSE(IsDefault(twice, Type, Entry));
    EXPECT_TRUE(IsDefault(With(twice), Type, Entry));
    const auto ours = Defaults("hex.desktop") + Defaults("Burnwick.desktop");
    EXPECT_EQ(Without(ours), Defaults("hex.desktop") + "[Default Applications]\n");
}

TEST(MimeDefaults, KeepTheEndsOfLines) {
    EXPECT_EQ(
        With("[Default Applications]\r\napplication/x-burnwick-image = a.desktop\r\n# end"),
        "[Default Applications]\r\napplication/x-burnwick-image = Burnwick.desktop;a.desktop;\r\n# end");
    EXPECT_EQ(With("[Default Applications]"), Defaults("Burnwick.desktop"));
    EXPECT_EQ(With("# end"), "# end\n\n" + Defaults("Burnwick.desktop"));
}

TEST(MimeDefaults, InWhatIsNoListAreFoundNowhere) {
    for (const std::string text : {"[", "[]", "=", "\n\n", "[Default Applications", "a=b=c", "\xFF\xFE"}) {
        EXPECT_FALSE(IsDefault(text, Type, Entry));
        EXPECT_EQ(Without(text), text);
        EXPECT_TRUE(IsDefault(With(text), Type, Entry)) << text;
    }
}

}  // namespace
}  // namespace burnwick
