// The main window's system menu, as the system shows it.
#include <vector>

#include "gui/WindowTest.h"
#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::IsSupersetOf;
using ::testing::Not;

constexpr UINT GreyedClose = static_cast<UINT>(-10);

}  // namespace

class frmMainSystemMenu : public WindowTest {
protected:
    std::vector<UINT> Commands() const {
        const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(Window->winId()), FALSE);
        std::vector<UINT> commands(static_cast<std::size_t>(GetMenuItemCount(menu)));
        for (std::size_t i = 0; i < commands.size(); ++i) {
            commands[i] = GetMenuItemID(menu, static_cast<int>(i));
        }
        return commands;
    }
};

// The system may have commands of its own behind them.
TEST_F(frmMainSystemMenu, LacksRestoreSizeAndMaximize) {
    Start();
    EXPECT_THAT(Commands(),
                AllOf(Not(Contains(SC_RESTORE)), Not(Contains(SC_SIZE)), Not(Contains(SC_MAXIMIZE))));
    EXPECT_THAT(Commands(), IsSupersetOf({UINT{SC_MOVE}, UINT{SC_MINIMIZE}, UINT{SC_CLOSE}}));
}

TEST_F(frmMainSystemMenu, IsThatOfAWindowWhoseFrameCannotBeDragged) {
    Start();
    const auto style = GetWindowLongPtrW(reinterpret_cast<HWND>(Window->winId()), GWL_STYLE);
    EXPECT_EQ(style & (WS_THICKFRAME | WS_MAXIMIZEBOX), 0);
    EXPECT_NE(style & WS_MINIMIZEBOX, 0);
}

TEST_F(frmMainSystemMenu, HasAGreyedCloseOfAnotherNumberWhileBlocksAreSent) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block",
               [this] { EXPECT_THAT(Commands(), AllOf(Contains(GreyedClose), Not(Contains(SC_CLOSE)))); });
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_THAT(Commands(), AllOf(Contains(SC_CLOSE), Not(Contains(GreyedClose))));
}

}  // namespace burnwick::test
