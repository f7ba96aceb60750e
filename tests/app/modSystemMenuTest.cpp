#include "app/modSystemMenu.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace burnwick::modSystemMenu {
namespace {

using testing::ElementsAre;

class FakeMenu final : public SystemMenu {
public:
    void Delete(SystemCommand command) override {
        Calls.push_back("delete " + std::to_string(static_cast<int>(command)));
    }
    bool CloseIsGreyed() const override { return Greyed; }
    void SetCloseGreyed(bool greyed) override {
        Greyed = greyed;
        Calls.emplace_back(greyed ? "grey" : "ungrey");
    }
    void DrawTitleBar(bool active) override { Calls.emplace_back(active ? "active" : "inactive"); }

    bool Greyed = false;
    std::vector<std::string> Calls;
};

TEST(modSystemMenuTest, AToggleGreysTheCloseCommandAndDrawsTheTitleBar) {
    FakeMenu menu;
    ToggleCloseCommand(menu);
    EXPECT_THAT(menu.Calls, ElementsAre("grey", "active"));
}

TEST(modSystemMenuTest, TwoTogglesLeaveTheCloseCommandAsItWas) {
    FakeMenu menu;
    ToggleCloseCommand(menu);
    ToggleCloseCommand(menu);
    EXPECT_FALSE(menu.Greyed);
}

TEST(modSystemMenuTest, AThirdToggleGreysItAgain) {
    FakeMenu menu;
    for (int i = 0; i < 3; ++i) {
        ToggleCloseCommand(menu);
    }
    EXPECT_TRUE(menu.Greyed);
}

TEST(modSystemMenuTest, EachItemHasItsNumber) {
    for (const int item : {0, 1, 2, 3, 4, 5}) {
        FakeMenu menu;
        RemoveSystemMenuItem(menu, item);
        EXPECT_EQ(menu.Calls.front(), "delete " + std::to_string(item));
    }
}

TEST(modSystemMenuTest, TheTitleBarIsDrawnWithoutTheItem) {
    FakeMenu menu;
    RemoveSystemMenuItem(menu, 0);
    EXPECT_THAT(menu.Calls, ElementsAre("delete 0", "inactive", "active"));
}

TEST(modSystemMenuTest, AnyOtherNumberOnlyDrawsTheTitleBar) {
    for (const int item : {-1, 6}) {
        FakeMenu menu;
        RemoveSystemMenuItem(menu, item);
        EXPECT_THAT(menu.Calls, ElementsAre("inactive", "active"));
    }
}

}  // namespace
}  // namespace burnwick::modSystemMenu
