#include "platform/qt/EventRound.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QObject>
#include <QThread>
#include <chrono>
#include <exception>
#include <utility>

#include "platform/windows/ModalBell.h"
#include "platform/windows/WatchRound.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

int LoopLevel() {
    return QThread::currentThread()->loopLevel();
}

// Counts the events that reach their objects.
class Deliveries final : public QObject {
public:
    Deliveries() { QCoreApplication::instance()->installEventFilter(this); }

    unsigned Count = 0;

private:
    bool eventFilter(QObject* /*watched*/, QEvent* /*event*/) override {
        ++Count;
        return false;
    }
};

// The dispatcher may take the message that announces an event long before it delivers that, and sleeps
// although it has just delivered one. So it sleeps only after a round in which there was nothing, and what
// has woken it gets as many rounds as it takes, unless somebody always posts anew.
void HandleEvents(const Deliveries& deliveries, bool wait) {
    constexpr int most = 5;
    auto* const dispatcher = QAbstractEventDispatcher::instance();
    const unsigned before = deliveries.Count;
    bool again = dispatcher->processEvents(QEventLoop::AllEvents);
    if (wait && !again && deliveries.Count == before) {
        again = dispatcher->processEvents(QEventLoop::WaitForMoreEvents);
    }
    for (int i = 0; i < most && again; ++i) {
        again = dispatcher->processEvents(QEventLoop::AllEvents);
    }
}

// Messages with which a window may go into a loop of the system, from which its procedure comes back when the
// user lets go of the mouse. Alt+Space is the toolkit's own: it opens the menu without a command.
bool MayBeginModalLoop(const MSG& message) {
    switch (message.message) {
        case WM_SYSCOMMAND:
        case WM_ENTERSIZEMOVE:
        case WM_ENTERMENULOOP:
        case WM_ENTERIDLE:
        case WM_CONTEXTMENU:
        case WM_NCLBUTTONDOWN:
            return true;
        case WM_SYSKEYDOWN:
            return message.wParam == VK_SPACE;
        default:
            return false;
    }
}

bool IsInLoopOfTheSystem() {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    constexpr DWORD loops = GUI_INMOVESIZE | GUI_INMENUMODE | GUI_SYSTEMMENUMODE | GUI_POPUPMENUMODE;
    return GetGUIThreadInfo(GetCurrentThreadId(), &thread) != FALSE && (thread.flags & loops) != 0;
}

// While a button of the title bar is held down, the system waits for the mouse in a loop that hears nothing
// else. In a run such a button does its work when it is pressed.
bool ActsAtOnce(const MSG& message) {
    if (message.message != WM_NCLBUTTONDOWN && message.message != WM_NCLBUTTONDBLCLK) {
        return false;
    }
    const bool closes = message.wParam == HTCLOSE;
    return (closes || message.wParam == HTMINBUTTON)
           && PostMessageW(message.hwnd, WM_SYSCOMMAND, closes ? SC_CLOSE : SC_MINIMIZE, message.lParam)
                  != FALSE;
}

bool IsOnCaption(const MSG& message) {
    return message.wParam == HTCAPTION || message.wParam == HTSYSMENU;
}

// The right button is waited for in the same way. In a run its press does nothing, and its release asks for
// the menu.
bool TakesRightButton(const MSG& message) {
    if (!IsOnCaption(message)) {
        return false;
    }
    if (message.message == WM_NCRBUTTONUP) {
        PostMessageW(message.hwnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(message.hwnd), message.lParam);
    }
    return message.message == WM_NCRBUTTONDOWN || message.message == WM_NCRBUTTONUP;
}

// Whoever presses the title bar may want to click twice: the system waits for that, up to half a second, or
// until the mouse moves.
void BeginDragAtOnce(const MSG& message) {
    if (message.message == WM_NCLBUTTONDOWN && message.wParam == HTCAPTION) {
        POINT place{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
        ScreenToClient(message.hwnd, &place);
        PostMessageW(message.hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(place.x, place.y));
    }
}

// A run must go on while the user holds the window by its title bar: a unit that is half programmed does not
// wait. So the events are handled on a fiber of their own, the guest. When a loop of the system holds that
// one, the bell rings in there, and the thread goes over to the fiber of the program, the host, in the midst
// of it: to the host its Yield is over. The next Yield lets the guest go on where it was.
//
// The system's loop has its place on the thread's kernel stack, and whatever was called before it must not
// return before it does. The host's Yield stands in no call of the system as a rule: Qt queues what the user
// does, and hands it out of its own loop. Where a loop of the system has called it, it stays on its fiber.
class FiberRound final : public EventRound, private QAbstractNativeEventFilter {
public:
    FiberRound();
    FiberRound(const FiberRound&) = delete;
    FiberRound& operator=(const FiberRound&) = delete;
    ~FiberRound() override;

    void Run(bool wait) override;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    static void WINAPI BeGuest(void* round);
    bool HostMayGoOn() const;
    void LetGuestGoOn();
    void ThrowOn();
    void RunDirectly(bool wait);
    void WantHost();
    void Ring();
    void HandOver();
    void LeaveLoop();

    void* Host_ = nullptr;
    void* Guest_ = nullptr;
    bool OnGuest_ = false;
    bool GuestIsBusy_ = false;     // its round is not over
    bool GuestHasThread_ = false;  // until its round is over: the host waits for that
    bool HostIsWanted_ = false;    // it has got input, and is not to wait for the bell
    bool Wait_ = false;
    int Level_ = 0;   // of the event loops that the host's Yield stands in
    int Nested_ = 0;  // Yields that run on the guest
    Clock::time_point GuestSince_;
    Clock::time_point HostSince_;
    bool HandOverIsQueued_ = false;
    std::exception_ptr Thrown_;
    Deliveries Deliveries_;
    QObject Receiver_;
    ModalBell Bell_;
};

FiberRound::FiberRound() : Bell_([this] { Ring(); }) {
    constexpr SIZE_T committed = SIZE_T{64} * 1024;
    // Windows, dialogs and all that a click may start run on it.
    constexpr SIZE_T reserved = SIZE_T{8} * 1024 * 1024;
    Host_ = ConvertThreadToFiberEx(nullptr, FIBER_FLAG_FLOAT_SWITCH);
    if (Host_ != nullptr) {
        Guest_ = CreateFiberEx(committed, reserved, FIBER_FLAG_FLOAT_SWITCH, BeGuest, this);
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
}

FiberRound::~FiberRound() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
    LeaveLoop();
    // A guest that cannot be freed stays as it is, for calls of the system lie on its stack.
    if (Guest_ != nullptr && !GuestIsBusy_) {
        DeleteFiber(Guest_);
    }
    if (Host_ != nullptr) {
        ConvertFiberToThread();
    }
}

void FiberRound::Run(bool wait) {
    const WatchRound watches([this] { WantHost(); });
    // What has come in by now comes before the ticks that are due with it.
    wait = !watches.LookAtAll() && wait;
    if (OnGuest_ || Guest_ == nullptr || (!GuestIsBusy_ && IsInLoopOfTheSystem())) {
        RunDirectly(wait);
    } else if (!GuestIsBusy_ || wait || Clock::now() - HostSince_ >= ModalBell::Interval) {
        Wait_ = wait;
        LetGuestGoOn();
        ThrowOn();
    }  // a program that does not wait for anything is not slowed down by a loop that has nothing to do
    watches.LookAtAll();
}

// On the guest, in what an event has called; in a loop of the system; or on a thread that has no fibers.
void FiberRound::RunDirectly(bool wait) {
    struct Nesting {
        explicit Nesting(int& depth) : Depth(depth) { ++Depth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --Depth; }
        int& Depth;
    };
    const Nesting nesting(Nested_);
    HandleEvents(Deliveries_, wait);
}

void FiberRound::LetGuestGoOn() {
    GuestIsBusy_ = true;
    HostIsWanted_ = false;
    Level_ = LoopLevel();
    GuestSince_ = Clock::now();
    OnGuest_ = true;
    SwitchToFiber(Guest_);
    OnGuest_ = false;
    HostSince_ = Clock::now();
    if (!GuestIsBusy_) {
        return;
    }
    if (!std::exchange(HandOverIsQueued_, true)) {
        QMetaObject::invokeMethod(
            &Receiver_, [this] { HandOver(); }, Qt::QueuedConnection);
    }
    // The program's own loop would take all input that waits, the button's release too, before it hands over.
    QAbstractEventDispatcher::instance()->interrupt();
}

// Nothing may be thrown out of a fiber: the host throws on what the guest has caught.
void FiberRound::ThrowOn() {
    if (Thrown_) {
        std::rethrow_exception(std::exchange(Thrown_, nullptr));
    }
}

void WINAPI FiberRound::BeGuest(void* round) {
    auto& self = *static_cast<FiberRound*>(round);
    for (;;) {
        try {
            HandleEvents(self.Deliveries_, self.Wait_);
        } catch (...) {
            self.Thrown_ = std::current_exception();
        }
        self.Bell_.Stop();
        self.GuestIsBusy_ = false;
        self.GuestHasThread_ = false;
        SwitchToFiber(self.Host_);
    }
}

bool FiberRound::nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* result) {
    const MSG& sent = *static_cast<const MSG*>(message);
    if (!HostMayGoOn()) {
        return false;
    }
    if (ActsAtOnce(sent) || TakesRightButton(sent)) {
        // Nobody asks for one when the message comes out of the queue.
        if (result != nullptr) {
            *result = 0;
        }
        return true;
    }
    if (MayBeginModalLoop(sent)) {
        Bell_.Start();
    }
    BeginDragAtOnce(sent);
    return false;
}

// Asked on the guest. Nothing of the program may stand between the host's Yield and a loop of the system:
// neither a dialog nor another Yield may be left unfinished behind it.
bool FiberRound::HostMayGoOn() const {
    return OnGuest_ && !GuestHasThread_ && Nested_ == 0 && LoopLevel() == Level_;
}

void FiberRound::WantHost() {
    if (OnGuest_) {
        HostIsWanted_ = true;
        Bell_.RingSoon();
    }
}

// In a loop of the system. What was rung while the host was at work is too early: the loop gets its time,
// too.
void FiberRound::Ring() {
    if (HostMayGoOn() && (HostIsWanted_ || Clock::now() - GuestSince_ >= ModalBell::Interval / 2)) {
        SwitchToFiber(Host_);
    }
}

// The program is back in its own event loop, or in a dialog's: from now on the loop of the system is all that
// happens, as it is in a program without a run. On the guest the host is still in a Yield, and will ask
// again.
void FiberRound::HandOver() {
    HandOverIsQueued_ = false;
    if (!OnGuest_ && GuestIsBusy_) {
        Bell_.Stop();
        GuestHasThread_ = true;
        LetGuestGoOn();
        ThrowOn();
    }
}

void FiberRound::LeaveLoop() {
    const auto deadline = Clock::now() + 1s;
    while (!OnGuest_ && GuestIsBusy_ && Clock::now() < deadline) {
        Bell_.CancelLoop();
        Wait_ = false;
        LetGuestGoOn();
    }
}

}  // namespace

std::unique_ptr<EventRound> NewEventRound() {
    return std::make_unique<FiberRound>();
}

}  // namespace burnwick
