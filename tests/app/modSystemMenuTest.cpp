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
    void RedrawTitleBar() override { Calls.emplace_back("redraw"); }

    bool Greyed = false;
    std::vector<std::string> Calls;
};

TEST(modSystemMenuTest, AToggleGreysTheCloseCommandAndRedrawsTheTitleBar) {
    FakeMenu menu;
    ToggleCloseCommand(menu);
    EXPECT_THAT(menu.Calls, ElementsAre("grey", "redraw"));
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
    FakeMenu menu;
    for (const int item : {0, 1, 2, 3, 4, 5}) {
        RemoveSystemMenuItem(menu, item);
    }
    EXPECT_THAT(menu.Calls, ElementsAre("delete 0", "redraw", "delete 1", "redraw", "delete 2", "redraw",
                                        "delete 3", "redraw", "delete 4", "redraw", "delete 5", "redraw"));
}

TEST(modSystemMenuTest, AnyOtherNumberOnlyRedraws) {
    FakeMenu menu;
    RemoveSystemMenuItem(menu, -1);
    RemoveSystemMenuItem(menu, 6);
    EXPECT_THAT(menu.Calls, ElementsAre("redraw", "redraw"));
}

}  // namespace
}  // namespace burnwick::modSystemMenu
