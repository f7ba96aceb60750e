// The main window's own system menu, and its title bar, as the system knows them.
#include "platform/window/SystemMenu.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "gui/Await.h"
#include "gui/windows/NativeWindow.h"
#include "platform/window/Attention.h"
#include "support/Elapsed.h"

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;

constexpr UINT NotThere = static_cast<UINT>(-1);
constexpr UINT NoClose = static_cast<UINT>(-10);
constexpr UINT GreyedBits = 3;

class SystemMenuTest : public testing::Test {
protected:
    SystemMenuTest() { Settle(); }

    // Until what was posted before has been handled: messages come in their order, and the toolkit handles
    // some of them as events of its own.
    void Settle() const {
        const int before = Window_.Marks;
        Window_.Post(NativeWindow::Mark, 0);
        EXPECT_TRUE(Await([&] { return Window_.Marks > before; }));
        QCoreApplication::processEvents();
    }
    HMENU SystemsOwn() const { return GetSystemMenu(Window_.Handle(), FALSE); }
    UINT StateOf(UINT number) const { return GetMenuState(SystemsOwn(), number, MF_BYCOMMAND); }
    bool Has(UINT number) const { return StateOf(number) != NotThere; }
    std::vector<UINT> Numbers() const {
        std::vector<UINT> numbers;
        for (int i = 0; i < GetMenuItemCount(SystemsOwn()); ++i) {
            numbers.push_back(GetMenuItemID(SystemsOwn(), i));
        }
        return numbers;
    }
    std::wstring CloseText() const {
        std::wstring text(80, L' ');
        text.resize(static_cast<std::size_t>(GetMenuStringW(SystemsOwn(), SC_CLOSE, text.data(),
                                                            static_cast<int>(text.size()), MF_BYCOMMAND)));
        return text;
    }
    void ExpectGreyed() const {
        EXPECT_FALSE(Has(SC_CLOSE));
        ASSERT_TRUE(Has(NoClose));
        EXPECT_EQ(StateOf(NoClose) & GreyedBits, GreyedBits);
        EXPECT_TRUE(Menu_->CloseIsGreyed());
    }
    void ExpectEnabled() const {
        EXPECT_FALSE(Has(NoClose));
        ASSERT_TRUE(Has(SC_CLOSE));
        EXPECT_EQ(StateOf(SC_CLOSE) & GreyedBits, 0U);
        EXPECT_FALSE(Menu_->CloseIsGreyed());
    }

    NativeWindow Window_;
    const std::unique_ptr<SystemMenu> Menu_ = SystemMenuOf(Window_.winId());
};

TEST_F(SystemMenuTest, ADeletedCommandIsGone) {
    Menu_->Delete(SystemCommand::Restore);
    Menu_->Delete(SystemCommand::Size);
    Menu_->Delete(SystemCommand::Maximize);
    EXPECT_FALSE(Has(SC_RESTORE));
    EXPECT_FALSE(Has(SC_SIZE));
    EXPECT_FALSE(Has(SC_MAXIMIZE));
    EXPECT_TRUE(Has(SC_MOVE));
    EXPECT_TRUE(Has(SC_MINIMIZE));
    EXPECT_TRUE(Has(SC_CLOSE));
}

TEST_F(SystemMenuTest, EachCommandCanBeDeleted) {
    for (const auto command : {SystemCommand::Move, SystemCommand::Minimize, SystemCommand::Close}) {
        Menu_->Delete(command);
    }
    EXPECT_FALSE(Has(SC_MOVE));
    EXPECT_FALSE(Has(SC_MINIMIZE));
    EXPECT_FALSE(Has(SC_CLOSE));
}

TEST_F(SystemMenuTest, WhatWasDeletedDoesNotComeBack) {
    Menu_->Delete(SystemCommand::Maximize);
    Window_.showMinimized();
    Settle();
    Window_.showNormal();
    Settle();
    Window_.hide();
    Window_.show();
    Settle();
    EXPECT_FALSE(Has(SC_MAXIMIZE));
}

TEST_F(SystemMenuTest, WhatWasDeletedHasNoButtonEither) {
    const auto has = [this](LONG_PTR style) {
        return (GetWindowLongPtrW(Window_.Handle(), GWL_STYLE) & style) != 0;
    };
    EXPECT_TRUE(has(WS_MAXIMIZEBOX) && has(WS_MINIMIZEBOX));
    Menu_->Delete(SystemCommand::Maximize);
    EXPECT_FALSE(has(WS_MAXIMIZEBOX));
    Menu_->Delete(SystemCommand::Minimize);
    EXPECT_FALSE(has(WS_MINIMIZEBOX));
}

TEST_F(SystemMenuTest, WhatWasDeletedCannotBeGivenByOtherMeans) {
    for (const auto command : {SystemCommand::Restore, SystemCommand::Maximize, SystemCommand::Minimize}) {
        Menu_->Delete(command);
    }
    Window_.Post(WM_SYSCOMMAND, SC_MAXIMIZE);
    Window_.Post(WM_NCLBUTTONDBLCLK, HTCAPTION);
    Window_.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    Settle();
    EXPECT_FALSE(IsZoomed(Window_.Handle()));
    EXPECT_FALSE(IsIconic(Window_.Handle()));
}

TEST_F(SystemMenuTest, CloseIsEnabledAtFirst) {
    ExpectEnabled();
}

TEST_F(SystemMenuTest, AGreyedCloseHasAnotherNumber) {
    const auto before = Numbers();
    Menu_->SetCloseGreyed(true);
    ExpectGreyed();
    auto after = Numbers();
    std::replace(after.begin(), after.end(), NoClose, static_cast<UINT>(SC_CLOSE));
    EXPECT_EQ(after, before);
}

TEST_F(SystemMenuTest, ACloseThatIsEnabledAgainIsAsItWas) {
    const UINT state = StateOf(SC_CLOSE);
    const auto numbers = Numbers();
    const auto text = CloseText();
    Menu_->SetCloseGreyed(true);
    Menu_->SetCloseGreyed(false);
    ExpectEnabled();
    EXPECT_EQ(StateOf(SC_CLOSE), state);
    EXPECT_EQ(Numbers(), numbers);
    EXPECT_EQ(CloseText(), text);
}

TEST_F(SystemMenuTest, AskingTwiceForTheSameChangesNothing) {
    Menu_->SetCloseGreyed(false);
    ExpectEnabled();
    Menu_->SetCloseGreyed(true);
    Menu_->SetCloseGreyed(true);
    ExpectGreyed();
}

TEST_F(SystemMenuTest, ADeletedCloseCannotBeGreyed) {
    Menu_->Delete(SystemCommand::Close);
    Menu_->SetCloseGreyed(true);
    EXPECT_FALSE(Menu_->CloseIsGreyed());
    EXPECT_FALSE(Has(NoClose));
}

TEST_F(SystemMenuTest, CloseStaysGreyedWhateverBecomesOfTheWindow) {
    Menu_->SetCloseGreyed(true);
    Window_.showMinimized();
    Settle();
    ExpectGreyed();
    Window_.showNormal();
    Settle();
    ExpectGreyed();
    Window_.hide();
    Window_.show();
    Settle();
    ExpectGreyed();
    Window_.setWindowTitle("another title");
    Window_.windowHandle()->setFlags(Window_.windowHandle()->flags() | Qt::WindowCloseButtonHint);
    Settle();
    ExpectGreyed();
}

TEST_F(SystemMenuTest, CloseStaysGreyedWhileTheMenuIsOpen) {
    Menu_->SetCloseGreyed(true);
    // The menu has an event loop of its own, in which the toolkit's timers tick.
    QTimer inMenu;
    QObject::connect(&inMenu, &QTimer::timeout, &inMenu, [this] {
        if (Window_.Entered == 1) {
            ExpectGreyed();
            Window_.Post(WM_CANCELMODE, 0);
        }
    });
    inMenu.start(20ms);
    Window_.Post(WM_SYSCOMMAND, SC_KEYMENU, ' ');
    EXPECT_TRUE(Await([this] { return Window_.Left == 1; }));
    ExpectGreyed();
}

TEST_F(SystemMenuTest, ACloseCommandClosesTheWindow) {
    Window_.Post(WM_SYSCOMMAND, SC_CLOSE);
    Settle();
    EXPECT_EQ(Window_.Closings, 1);
    EXPECT_FALSE(Window_.isVisible());
}

TEST_F(SystemMenuTest, AGreyedCloseCannotBeGiven) {
    Menu_->SetCloseGreyed(true);
    Window_.Post(WM_SYSCOMMAND, SC_CLOSE);
    Window_.Post(WM_SYSCOMMAND, SC_CLOSE | 1);
    SendMessageW(Window_.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    Settle();
    EXPECT_EQ(Window_.Closings, 0);
    EXPECT_TRUE(Window_.isVisible());
}

TEST_F(SystemMenuTest, WhatTheSystemMakesOfTheKeyForCloseDoesNothingWhileItIsGreyed) {
    Menu_->SetCloseGreyed(true);
    DefWindowProcW(Window_.Handle(), WM_SYSKEYDOWN, VK_F4, WithAlt);
    Settle();
    EXPECT_EQ(Window_.Closings, 0);
    Menu_->SetCloseGreyed(false);
    DefWindowProcW(Window_.Handle(), WM_SYSKEYDOWN, VK_F4, WithAlt);
    Settle();
    EXPECT_EQ(Window_.Closings, 1);
}

TEST_F(SystemMenuTest, OtherCommandsAreCarriedOutWhileCloseIsGreyed) {
    Menu_->SetCloseGreyed(true);
    Window_.Post(WM_SYSCOMMAND, SC_MINIMIZE);
    Settle();
    EXPECT_TRUE(IsIconic(Window_.Handle()));
}

TEST_F(SystemMenuTest, AMinimizedWindowComesBackWithoutACommandForIt) {
    Menu_->Delete(SystemCommand::Restore);
    Window_.showMinimized();
    Settle();
    ASSERT_TRUE(IsIconic(Window_.Handle()));
    Window_.Post(WM_SYSCOMMAND, SC_RESTORE);
    Settle();
    EXPECT_FALSE(IsIconic(Window_.Handle()));
}

TEST_F(SystemMenuTest, AnotherWindowCanBeClosed) {
    Menu_->SetCloseGreyed(true);
    const NativeWindow other;
    other.Post(WM_SYSCOMMAND, SC_CLOSE);
    Settle();
    EXPECT_EQ(other.Closings, 1);
}

TEST_F(SystemMenuTest, TheTitleBarIsDrawnAsThatOfAnActiveWindowOrOfAnother) {
    Window_.Activations = 0;
    Window_.Deactivations = 0;
    Menu_->DrawTitleBar(true);
    EXPECT_EQ(Window_.Activations, 1);
    EXPECT_EQ(Window_.Deactivations, 0);
    Menu_->DrawTitleBar(false);
    EXPECT_EQ(Window_.Activations, 1);
    EXPECT_EQ(Window_.Deactivations, 1);
}

TEST_F(SystemMenuTest, TheTitleBarFlashesOnceEachTimeThatAttentionIsAskedFor) {
    Window_.Activations = 0;
    Window_.Deactivations = 0;
    for (int i = 1; i <= 4; ++i) {
        AskForAttention(Window_.winId());
        EXPECT_EQ(Window_.Activations + Window_.Deactivations, i);
    }
    EXPECT_EQ(Window_.Activations, 2);
    QTest::qWait(700);
    EXPECT_EQ(Window_.Activations + Window_.Deactivations, 4);
}

}  // namespace
}  // namespace burnwick::test
