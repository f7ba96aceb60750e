#include "platform/desktop/Notification.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <future>
#include <thread>

#include "platform/process/windows/UniqueHandle.h"
#include "platform/process/windows/WideText.h"
#include "support/Elapsed.h"

#include <shellapi.h>

namespace burnwick::test {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;

// What has the icons beside the clock: a window of a certain class, which is told what they are to show.
class FakeShell {
public:
    enum class Kind { Answers, Deaf };

    explicit FakeShell(Kind kind)
        : Thread_([this, kind] {
              const HWND window = NewWindow();
              Window_.set_value(window);
              if (kind == Kind::Deaf) {
                  WaitForSingleObject(End_.Get(), INFINITE);
              }
              for (MSG message; window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0;) {
                  DispatchMessageW(&message);
              }
          }) {
        Handle_ = Window_.get_future().get();
    }
    FakeShell(const FakeShell&) = delete;
    FakeShell& operator=(const FakeShell&) = delete;
    ~FakeShell() {
        SetEvent(End_.Get());
        PostMessageW(Handle_, WM_CLOSE, 0, 0);
        Thread_.join();
        UnregisterClassW(L"Shell_TrayWnd", GetModuleHandleW(nullptr));
    }

    // False on a desktop that shows no windows.
    bool IsThere() const { return Handle_ != nullptr; }

    // All that it has been told, texts and numbers alike, as characters.
    std::wstring Told() const { return Told_; }

    // What a compatibility layer's shell is told; Windows' own hides it in more.
    bool HasIcon() const { return HasIcon_; }

    // Tells the icon's window, as it wishes to be told.
    void Tell(UINT happened) const { PostMessageW(IconsWindow_, IconsMessage_, 0, happened); }

private:
    // How what it is told begins.
    struct Icon {
        LONG Window;
        UINT Id;
        UINT Flags;
        UINT Message;
    };

    void Take(const COPYDATASTRUCT& data) {
        Told_.append(static_cast<const wchar_t*>(data.lpData), data.cbData / sizeof(wchar_t));
        HasIcon_ = data.dwData != NIM_DELETE;
        if (data.dwData == NIM_ADD) {
            Icon icon{};
            std::memcpy(&icon, data.lpData, std::min<std::size_t>(sizeof icon, data.cbData));
            IconsWindow_ = static_cast<HWND>(LongToHandle(icon.Window));
            IconsMessage_ = icon.Message;
        }
    }

    HWND NewWindow() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = OnMessage;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"Shell_TrayWnd";
        RegisterClassW(&windowClass);
        const HWND window = CreateWindowExW(WS_EX_TOPMOST, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 1,
                                            1, nullptr, nullptr, windowClass.hInstance, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        return window;
    }

    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        if (message == WM_COPYDATA) {
            auto* const self = reinterpret_cast<FakeShell*>(GetWindowLongPtrW(window, GWLP_USERDATA));
            self->Take(*reinterpret_cast<const COPYDATASTRUCT*>(second));
            return TRUE;
        }
        if (message == WM_DESTROY) {
            PostQuitMessage(0);
        }
        return DefWindowProcW(window, message, first, second);
    }

    std::wstring Told_;
    bool HasIcon_ = false;
    HWND IconsWindow_ = nullptr;
    UINT IconsMessage_ = 0;
    UniqueHandle End_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::promise<HWND> Window_;
    HWND Handle_ = nullptr;
    std::thread Thread_;
};

void ExpectSoonOver(const std::string& title, const std::string& text) {
    EXPECT_LT(test::Elapsed([&] { Notify(title, text); }), test::HangLimit);
}

TEST(NotificationTest, ReachesTheShellAsItStands) {
    const FakeShell shell(FakeShell::Kind::Answers);
    if (!shell.IsThere()) {
        GTEST_SKIP() << "no window can be made here";
    }
    Notify("<a> & b", "<b>R&D</b>\\\xC3\xBC\xD0\x97.bin");
    EXPECT_THAT(shell.Told(), HasSubstr(L"<a> & b"));
    EXPECT_THAT(shell.Told(), HasSubstr(L"<b>R&D</b>\\\u00FC\u0417.bin"));
}

TEST(NotificationTest, IsCutBetweenCharactersWhereTheShellsRoomEnds) {
    const FakeShell shell(FakeShell::Kind::Answers);
    if (!shell.IsThere()) {
        GTEST_SKIP() << "no window can be made here";
    }
    Notify(std::string(62, 't') + "\xF0\x9F\x94\xA5", std::string(254, 'x') + "\xF0\x9F\x94\xA5");
    EXPECT_THAT(shell.Told(), HasSubstr(std::wstring(62, L't') + L'\0'));
    EXPECT_THAT(shell.Told(), HasSubstr(std::wstring(254, L'x') + L'\0'));
    EXPECT_THAT(shell.Told(), Not(HasSubstr(std::wstring(254, L'x') + L'\xD83D')));
}

// What has been told to this thread's windows.
void HandleMessages() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;) {
        DispatchMessageW(&message);
    }
}

class NotificationIconTest : public testing::TestWithParam<UINT> {};

TEST_P(NotificationIconTest, GoesWithItsMessage) {
    const FakeShell shell(FakeShell::Kind::Answers);
    if (!shell.IsThere() || GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr) {
        GTEST_SKIP() << "another shell is there";
    }
    Notify("Unit 1", "Programming was completed.");
    ASSERT_TRUE(shell.HasIcon());
    shell.Tell(WM_MOUSEMOVE);
    shell.Tell(NIN_BALLOONSHOW);
    HandleMessages();
    EXPECT_TRUE(shell.HasIcon());
    shell.Tell(GetParam());
    HandleMessages();
    EXPECT_FALSE(shell.HasIcon());
}

INSTANTIATE_TEST_SUITE_P(ThatIsOverOrClicked, NotificationIconTest,
                         testing::Values(NIN_BALLOONTIMEOUT, NIN_BALLOONUSERCLICK));

TEST(NotificationTest, AShellThatDoesNotAnswerIsNotWaitedFor) {
    const FakeShell shell(FakeShell::Kind::Deaf);
    ExpectSoonOver("Unit 1", "Programming was completed.");
}

TEST(NotificationTest, ADesktopWithoutAShellIsNoError) {
    ExpectSoonOver("Unit 1", "Programming was completed.");
}

}  // namespace
}  // namespace burnwick::test
