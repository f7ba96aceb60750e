// A user who holds the window while a run is on its way.
#include "gui/frmMainRealLineTest.h"
#include "gui/windows/NativeWindow.h"

namespace burnwick::test {

using namespace std::chrono_literals;

struct Hold {
    const char* Name;
    WPARAM Command;  // of the system menu, which begins it
    LPARAM Key;
    UINT End;  // the message that ends it
    WPARAM EndDetail;

    friend void PrintTo(const Hold& hold, std::ostream* out) { *out << hold.Name; }
};

class frmMainHeld : public frmMainRealLine, public ::testing::WithParamInterface<Hold> {
protected:
    HWND Handle() const { return reinterpret_cast<HWND>(Window->winId()); }
    void TakeHold() const { PostMessageW(Handle(), WM_SYSCOMMAND, GetParam().Command, GetParam().Key); }
    void LetGo() {
        PostMessageW(Handle(), GetParam().End, GetParam().EndDetail, 0);
        for (const auto limit = Loop_.MillisecondClock() + 10s;
             SystemHolds() && Loop_.MillisecondClock() < limit;) {
            Loop_.Yield(100ms);
        }
        EXPECT_FALSE(SystemHolds());
    }
};

INSTANTIATE_TEST_SUITE_P(By, frmMainHeld,
                         testing::Values(Hold{"ItsMenu", SC_KEYMENU, ' ', WM_CANCELMODE, 0},
                                         Hold{"ItsTitleBar", SC_MOVE, 0, WM_KEYDOWN, VK_ESCAPE}),
                         [](const auto& kind) { return std::string(kind.param.Name); });

TEST_P(frmMainHeld, ARunEndsWellAllTheSame) {
    const UnitProgram unit;
    StartAt(unit.Line());
    WhenStatus("Sending block", [this] { TakeHold(); });
    Download(Image());
    EXPECT_EQ(Status(), Programmed) << Display();
    EXPECT_TRUE(SystemHolds()) << "until now";
    LetGo();
    ExpectUsable(unit);
}

}  // namespace burnwick::test
