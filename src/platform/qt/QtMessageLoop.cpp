#include "platform/qt/QtMessageLoop.h"

#include <QThread>
#include <algorithm>
#include <utility>

#include "platform/System.h"
#include "platform/WindowLoop.h"
#include "platform/qt/QtWatch.h"

namespace burnwick {

namespace {

std::chrono::microseconds MonotonicTime() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

int LoopLevel() {
    return QThread::currentThread()->loopLevel();
}

}  // namespace

// A Yield that is going on. One may run inside another, and a dialog's own event loop in between.
class QtMessageLoop::Call {
public:
    explicit Call(QtMessageLoop& loop) : Loop_(loop), Outer_(std::exchange(loop.Innermost_, this)) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() { Loop_.Innermost_ = Outer_; }

    const int Level = LoopLevel();
    bool HasTicked = false;

private:
    QtMessageLoop& Loop_;
    Call* Outer_;
};

// A timer of the queue that sees to it that the event loop wakes up for it, whoever runs that.
class QtMessageLoop::WakingTimer final : public Timer {
public:
    WakingTimer(QtMessageLoop& loop, std::unique_ptr<Timer> queued)
        : Loop_(loop), Queued_(std::move(queued)) {}

    void SetEnabled(bool enabled) override {
        Queued_->SetEnabled(enabled);
        Loop_.WakeForTimers();
    }

    // The wake-up comes too early then, and is set anew.
    void SkipMissedTicks() override { Queued_->SkipMissedTicks(); }

private:
    QtMessageLoop& Loop_;
    std::unique_ptr<Timer> Queued_;
};

QtMessageLoop::QtMessageLoop() : System_(NewSystemLoop()), Timers_(MonotonicTime), Round_(NewEventRound()) {
    WakeUp_.setSingleShot(true);
    WakeUp_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&WakeUp_, &QTimer::timeout, &WakeUp_, [this] { WokenUp(); });
}

QtMessageLoop::~QtMessageLoop() = default;

void QtMessageLoop::Yield(std::chrono::microseconds atMost) {
    constexpr std::chrono::hours longestSleep{1};

    Call call(*this);
    const auto now = MonotonicTime();
    auto until = now + std::min<std::chrono::microseconds>(atMost, longestSleep);
    if (const auto due = Timers_.NextDue()) {
        until = std::min(until, *due);
    }
    if (until > now) {
        WakeBy(until);
    }
    Round_->Run(until > now);
    if (!call.HasTicked) {
        TickDue();
    }
}

std::chrono::milliseconds QtMessageLoop::MillisecondClock() const {
    return System_->MillisecondClock();
}

std::tm QtMessageLoop::Now() const {
    return System_->Now();
}

std::unique_ptr<Timer> QtMessageLoop::NewTimer(std::chrono::milliseconds interval,
                                               std::function<void()> tick) {
    // The tick may run a dialog, in which the other ticks are due all the same.
    auto queued = Timers_.NewTimer(interval, [this, tick = std::move(tick)] {
        WakeForTimers();
        tick();
    });
    return std::make_unique<WakingTimer>(*this, std::move(queued));
}

std::unique_ptr<Watch> QtMessageLoop::WatchInput(WaitHandle handle, std::function<void()> ready) {
    return WatchInEventLoop(handle, std::move(ready));
}

bool QtMessageLoop::InYieldItself() const {
    return Innermost_ != nullptr && Innermost_->Level == LoopLevel();
}

void QtMessageLoop::WokenUp() {
    WakesAt_.reset();
    if (InYieldItself() && Innermost_->HasTicked) {
        WakeForTimers();
    } else {
        TickDue();
    }
}

void QtMessageLoop::TickDue() {
    if (InYieldItself()) {
        Innermost_->HasTicked = true;
    }
    Timers_.TickDue();
    WakeForTimers();
}

void QtMessageLoop::WakeForTimers() {
    if (const auto due = Timers_.NextDue()) {
        WakeBy(*due);
    }
}

// A wake-up that is set for an earlier time is left there: it is cheaper to be woken now and then for nothing
// than to set a timer in every Yield.
void QtMessageLoop::WakeBy(std::chrono::microseconds time) {
    if (WakesAt_ && *WakesAt_ <= time) {
        return;
    }
    WakesAt_ = time;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - MonotonicTime());
    WakeUp_.start(std::max(left, std::chrono::milliseconds::zero()));
}

std::unique_ptr<MessageLoop> NewWindowLoop() {
    return std::make_unique<QtMessageLoop>();
}

}  // namespace burnwick
