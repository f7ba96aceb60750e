#include "platform/windows/ModalBell.h"

#include <QCoreApplication>
#include <utility>

namespace burnwick {

namespace {

constexpr const wchar_t* ClassName = L"BurnwickModalBell";
constexpr UINT Rung = WM_APP;

// A window that only hears messages.
HWND NewWindow(WNDPROC hear) {
    WNDCLASSEXW kind{};
    kind.cbSize = sizeof kind;
    kind.lpfnWndProc = hear;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = ClassName;
    // Refused when it is there already, which serves as well.
    RegisterClassExW(&kind);
    return CreateWindowExW(0, ClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, kind.hInstance,
                           nullptr);
}

}  // namespace

// Messages that are posted, and not those of a timer of the window system: these would come only when no
// mouse is moved any more.
ModalBell::ModalBell(std::function<void()> ring)
    : Ring_(std::move(ring)), Window_(NewWindow(Hear)), Timer_(CreateThreadpoolTimer(Pull, this, nullptr)) {
    SetWindowLongPtrW(Window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    QCoreApplication::instance()->installNativeEventFilter(this);
}

ModalBell::~ModalBell() {
    Stop();
    QCoreApplication::instance()->removeNativeEventFilter(this);
    if (Timer_ != nullptr) {
        CloseThreadpoolTimer(Timer_);
    }
    SetWindowLongPtrW(Window_, GWLP_USERDATA, 0);
    DestroyWindow(Window_);
}

void ModalBell::Start() {
    if (Timer_ == nullptr || std::exchange(Started_, true)) {
        return;
    }
    constexpr auto milliseconds = static_cast<DWORD>(Interval.count());
    ULARGE_INTEGER due{};
    due.QuadPart = static_cast<ULONGLONG>(-10'000LL * milliseconds);
    FILETIME first{due.LowPart, due.HighPart};
    SetThreadpoolTimer(Timer_, &first, milliseconds, 0);
}

void ModalBell::Stop() {
    if (std::exchange(Started_, false)) {
        SetThreadpoolTimer(Timer_, nullptr, 0, 0);
        WaitForThreadpoolTimerCallbacks(Timer_, TRUE);
    }
}

void ModalBell::RingSoon() {
    if (Started_) {
        Post();
    }
}

// Each kind of loop has its own way to be ended: the message for it, the lost mouse, or the key.
void ModalBell::CancelLoop() const {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetCurrentThreadId(), &thread);
    for (HWND window : {thread.hwndMoveSize, thread.hwndMenuOwner, thread.hwndCapture}) {
        if (window != nullptr) {
            SendMessageW(window, WM_CANCELMODE, 0, 0);
        }
    }
    PostMessageW(Window_, WM_KEYDOWN, VK_ESCAPE, 0);
}

// Qt's own loop shows its filters what it has taken from the queue; a loop of the system does not, and so
// hands the message to the window.
bool ModalBell::nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) {
    const MSG& taken = *static_cast<const MSG*>(message);
    if (taken.hwnd == Window_ && taken.message == Rung) {
        Posted_ = false;
        return true;
    }
    return false;
}

LRESULT CALLBACK ModalBell::Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const bell = reinterpret_cast<ModalBell*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != Rung || bell == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    bell->Posted_ = false;
    if (bell->Started_) {
        bell->Ring_();
    }
    return 0;
}

// One message at a time: a loop that is slow must not find a heap of them.
void ModalBell::Post() {
    if (!Posted_.exchange(true) && PostMessageW(Window_, Rung, 0, 0) == FALSE) {
        Posted_ = false;
    }
}

// On a thread of the system.
void CALLBACK ModalBell::Pull(PTP_CALLBACK_INSTANCE /*instance*/, PVOID bell, PTP_TIMER /*timer*/) {
    static_cast<ModalBell*>(bell)->Post();
}

}  // namespace burnwick
