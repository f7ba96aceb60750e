// The window's loop while the system runs a loop of its own: a window that is dragged, a system menu that is
// open.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QMessageBox>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>

#include "gui/windows/NativeWindow.h"
#include "platform/LoopHelpers.h"
#include "platform/Pipe.h"
#include "platform/SystemMenu.h"
#include "platform/WindowLoop.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

struct Held {
    const char* Name;
    UINT Begin;  // the message that begins it
    WPARAM BeginDetail;
    LPARAM Place;
    UINT End;  // the message that ends it
    WPARAM EndDetail;

    friend void PrintTo(const Held& held, std::ostream* out) { *out << held.Name; }
};

// The key, as the programs on this thread find it.
void HoldAlt(bool down) {
    std::array<BYTE, 256> keys{};
    GetKeyboardState(keys.data());
    keys[VK_MENU] = keys[VK_LMENU] = down ? 0x80 : 0;
    SetKeyboardState(keys.data());
}

class ModalLoopTest : public testing::TestWithParam<Held> {
protected:
    ModalLoopTest() { YieldFor(*Loop_, 20ms); }

    // The user takes hold of the window.
    void Hold(const NativeWindow& window) {
        HoldAlt(GetParam().Begin == WM_SYSKEYDOWN);
        window.Post(GetParam().Begin, GetParam().BeginDetail, GetParam().Place);
        while (!HasBegun(window)) {
            Loop_->Yield(60s);
        }
        HoldAlt(false);
    }
    void Hold() {
        Hold(Window_);
        ASSERT_TRUE(IsHeld());
    }
    // The toolkit's own menu tells only that it waits.
    static bool HasBegun(const NativeWindow& window) { return window.Entered + window.Idle > 0; }
    bool IsHeld() const { return HasBegun(Window_) && Window_.Entered <= 1 && Window_.Left == 0; }
    // He lets go of it.
    void LetGo() const { Window_.Post(GetParam().End, GetParam().EndDetail); }
    void LetGoAndWait() {
        LetGo();
        while (Window_.Left == 0) {
            Loop_->Yield(60s);
        }
        EXPECT_EQ(Window_.Left, 1);
    }

    std::unique_ptr<MessageLoop> Loop_ = NewWindowLoop();
    NativeWindow Window_;
    int Calls_ = 0;
};

INSTANTIATE_TEST_SUITE_P(
    Window, ModalLoopTest,
    testing::Values(Held{"ADraggedWindow", WM_SYSCOMMAND, SC_MOVE, 0, WM_KEYDOWN, VK_ESCAPE},
                    Held{"APressedTitleBar", WM_NCLBUTTONDOWN, HTCAPTION, 0, WM_LBUTTONUP, 0},
                    Held{"AnOpenSystemMenu", WM_SYSCOMMAND, SC_KEYMENU, ' ', WM_CANCELMODE, 0},
                    Held{"AClickedIcon", WM_NCLBUTTONDOWN, HTSYSMENU, 0, WM_CANCELMODE, 0},
                    Held{"TheMenuOfAltSpace", WM_SYSKEYDOWN, VK_SPACE, WithAlt, WM_CANCELMODE, 0}),
    [](const auto& kind) { return std::string(kind.param.Name); });

TEST_P(ModalLoopTest, TimersTick) {
    const auto timer = Loop_->NewTimer(20ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    Hold();
    for (int seen = Calls_; Calls_ < 20; seen = Calls_) {
        Loop_->Yield(60s);
        ASSERT_LE(Calls_, seen + 1);
    }
    EXPECT_TRUE(IsHeld());
    LetGoAndWait();
}

TEST_P(ModalLoopTest, InputIsHandled) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        ++Calls_;
    });
    Hold();
    for (int i = 1; i <= 20; ++i) {
        pipe.Put();
        while (Calls_ < i) {
            Loop_->Yield(60s);
        }
    }
    EXPECT_TRUE(IsHeld());
    LetGoAndWait();
}

TEST_P(ModalLoopTest, TheUserIsStillServedWhenTheProgramWaitsForNothing) {
    Hold();
    LetGo();
    while (Window_.Left == 0) {
        Loop_->Yield(0us);
    }
    EXPECT_EQ(Window_.Left, 1);
}

TEST_P(ModalLoopTest, AWaitUsesNextToNoProcessor) {
    Hold();
    const auto before = ProcessorTime();
    EXPECT_LT(YieldFor(*Loop_, 300ms), 100);
    EXPECT_LT(ProcessorTime() - before, 100ms);
    LetGoAndWait();
}

TEST_P(ModalLoopTest, TheWindowCanBeHeldAgain) {
    for (int i = 0; i < 3; ++i) {
        Hold();
        LetGoAndWait();
        Window_.Entered = 0;
        Window_.Idle = 0;
        Window_.Left = 0;
    }
    Hold();
    LetGoAndWait();
}

TEST_P(ModalLoopTest, AMessageToCancelEndsItToo) {
    Hold();
    SendMessageW(Window_.Handle(), WM_CANCELMODE, 0, 0);
    LetGoAndWait();
}

TEST_P(ModalLoopTest, WhatAnEventHasCalledIsOverWhenTheYieldIs) {
    bool inside = false;
    QTimer::singleShot(50, &Window_, [&] {
        inside = true;
        YieldFor(*Loop_, 100ms);
        inside = false;
        ++Calls_;
    });
    Hold();
    while (Calls_ == 0) {
        Loop_->Yield(60s);
        ASSERT_FALSE(inside);
    }
    LetGoAndWait();
}

TEST_P(ModalLoopTest, ADialogThatAnEventHasOpenedIsOverWhenTheYieldIs) {
    QDialog dialog;
    QTimer::singleShot(50, &Window_, [&] {
        QTimer::singleShot(100, &dialog, [&] { dialog.accept(); });
        dialog.exec();
        ++Calls_;
    });
    Hold();
    while (Calls_ == 0) {
        Loop_->Yield(60s);
        ASSERT_FALSE(dialog.isVisible());
    }
    LetGoAndWait();
}

TEST_P(ModalLoopTest, TheBoxAfterTheLastYieldCanBeUsed) {
    Hold();
    QMessageBox box;
    QTimer often;
    QObject::connect(&often, &QTimer::timeout, &box, [&] {
        if (++Calls_ == 3) {
            EXPECT_TRUE(IsHeld());
            LetGo();
        }
        if (Window_.Left > 0) {
            box.accept();
        }
    });
    often.start(20);
    box.exec();
    EXPECT_EQ(Window_.Left, 1);
    EXPECT_FALSE(box.isVisible());
    YieldFor(*Loop_, 20ms);
}

TEST_P(ModalLoopTest, TheLastInputReachesItAfterTheLastYield) {
    QEventLoop application;
    QTimer::singleShot(0, &application, [this] {
        Hold();
        LetGo();
    });
    QTimer often;
    const auto end = Loop_->MillisecondClock() + 10s;
    QObject::connect(&often, &QTimer::timeout, &application, [&] {
        if (Window_.Left > 0 || Loop_->MillisecondClock() > end) {
            application.quit();
        }
    });
    often.start(20);
    application.exec();
    EXPECT_EQ(Window_.Left, 1);
}

TEST_P(ModalLoopTest, TheLoopMayEndWhileTheWindowIsHeld) {
    Hold();
    Loop_.reset();
    EXPECT_EQ(Window_.Left, 1);
    QEventLoop application;
    QTimer::singleShot(20, &application, &QEventLoop::quit);
    application.exec();
}

TEST_P(ModalLoopTest, TheLoopMayEndAfterTheWindowThatIsHeld) {
    auto window = std::make_unique<NativeWindow>();
    Hold(*window);
    window.reset();
    Loop_.reset();
    EXPECT_FALSE(SystemHolds());
    const auto next = NewWindowLoop();
    const auto timer = next->NewTimer(20ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    while (Calls_ < 3) {
        next->Yield(60s);
    }
}

TEST(EventRoundTest, WhatAnEventThrowsComesOutOfTheYield) {
    const auto loop = NewWindowLoop();
    QObject object;
    QMetaObject::invokeMethod(
        &object, [] { throw std::runtime_error("thrown"); }, Qt::QueuedConnection);
    EXPECT_THROW(YieldFor(*loop, 1s), std::runtime_error);
    YieldFor(*loop, 20ms);
}

class YieldInModalLoopTest : public testing::Test {
protected:
    std::unique_ptr<MessageLoop> Loop_ = NewWindowLoop();
    NativeWindow Window_;
};

// The other's menu is closed by a timer, which only a loop of the system can let tick.
TEST_F(YieldInModalLoopTest, LeavesNoOtherInTheMidst) {
    NativeWindow other;
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, &other, [&] {
        if (other.Entered > 0) {
            other.Post(WM_CANCELMODE, 0);
        }
    });
    QTimer inside;
    inside.setSingleShot(true);
    QObject::connect(&inside, &QTimer::timeout, &Window_, [&] {
        EXPECT_EQ(Window_.Entered, 1);
        EXPECT_EQ(Window_.Left, 0);
        closing.start(20);
        other.Post(WM_SYSCOMMAND, SC_KEYMENU, ' ');
        while (other.Entered == 0) {
            Loop_->Yield(60s);
        }
        EXPECT_EQ(other.Left, 1);
        closing.stop();
        Window_.Post(WM_KEYDOWN, VK_ESCAPE);
    });
    inside.start(50);
    Window_.Post(WM_SYSCOMMAND, SC_MOVE);
    while (Window_.Left == 0) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Window_.Left, 1);
}

class PressedButtonTest : public testing::Test {
protected:
    // The user presses a button of the title bar, and does not let go.
    void Press(WPARAM button, const std::function<bool()>& effect) {
        Window_.Post(WM_NCLBUTTONDOWN, button);
        while (!effect()) {
            Loop_->Yield(60s);
        }
    }

    // A place on the title bar, on the screen.
    LPARAM Caption() const {
        RECT frame{};
        GetWindowRect(Window_.Handle(), &frame);
        const LPARAM place = MAKELPARAM(frame.left + 60, frame.top + 10);
        EXPECT_EQ(SendMessageW(Window_.Handle(), WM_NCHITTEST, 0, place), HTCAPTION);
        return place;
    }

    std::unique_ptr<MessageLoop> Loop_ = NewWindowLoop();
    NativeWindow Window_;
};

TEST_F(PressedButtonTest, MinimizesAtOnce) {
    Press(HTMINBUTTON, [this] { return IsIconic(Window_.Handle()) != FALSE; });
    EXPECT_TRUE(Window_.isVisible());
}

TEST_F(PressedButtonTest, ClosesAtOnce) {
    Press(HTCLOSE, [this] { return Window_.Closings > 0; });
    EXPECT_EQ(Window_.Closings, 1);
}

TEST_F(PressedButtonTest, ClosesNothingWhileCloseIsGreyed) {
    const auto menu = SystemMenuOf(Window_.winId());
    menu->SetCloseGreyed(true);
    Window_.Post(WM_NCLBUTTONDOWN, HTCLOSE);
    Window_.Post(NativeWindow::Mark, 0);
    while (Window_.Marks == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_FALSE(SystemHolds());
    EXPECT_EQ(Window_.Closings, 0);
}

TEST_F(PressedButtonTest, TheRightOneOfTheMouseHoldsNothing) {
    int calls = 0;
    const auto timer = Loop_->NewTimer(20ms, [&] { ++calls; });
    timer->SetEnabled(true);
    Window_.Post(WM_NCRBUTTONDOWN, HTCAPTION, Caption());
    while (calls < 10) {
        Loop_->Yield(60s);
    }
    EXPECT_FALSE(SystemHolds());
}

TEST_F(PressedButtonTest, TheRightOneOfTheMouseOpensTheMenuWhenItIsLetGo) {
    Window_.Post(WM_NCRBUTTONDOWN, HTCAPTION, Caption());
    Window_.Post(WM_NCRBUTTONUP, HTCAPTION, Caption());
    while (Window_.Entered == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_EQ(Window_.Left, 0);
    Window_.Post(WM_CANCELMODE, 0);
    while (Window_.Left == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_EQ(Window_.Left, 1);
}

}  // namespace
}  // namespace burnwick::test
