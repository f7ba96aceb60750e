#include "platform/loop/TimerQueue.h"

#include <algorithm>
#include <utility>

namespace burnwick {

class TimerQueue::QueuedTimer final : public Timer {
public:
    QueuedTimer(TimerQueue& queue, std::chrono::microseconds interval, std::function<void()> tick)
        : Queue_(queue), Interval_(std::max(interval, std::chrono::microseconds(1))), Tick_(std::move(tick)) {
        Queue_.Timers_.push_back(this);
    }

    QueuedTimer(const QueuedTimer&) = delete;
    QueuedTimer& operator=(const QueuedTimer&) = delete;

    ~QueuedTimer() override { std::erase(Queue_.Timers_, this); }

    void SetEnabled(bool enabled) override {
        if (enabled) {
            Due_ = Queue_.Clock_() + Interval_;
        } else {
            Due_.reset();
        }
    }

    void SkipMissedTicks() override {
        if (!Due_) {
            return;
        }
        const auto now = Queue_.Clock_();
        if (*Due_ <= now) {
            *Due_ += ((now - *Due_) / Interval_ + 1) * Interval_;
        }
    }

    std::optional<std::chrono::microseconds> Due() const { return Due_; }

    void TickOnce() {
        *Due_ += Interval_;
        // A copy, for the tick may end this timer.
        const auto tick = Tick_;
        tick();
    }

private:
    TimerQueue& Queue_;
    std::chrono::microseconds Interval_;
    std::function<void()> Tick_;
    std::optional<std::chrono::microseconds> Due_;
};

TimerQueue::TimerQueue(Clock clock) : Clock_(std::move(clock)) {}

TimerQueue::~TimerQueue() = default;

std::unique_ptr<Timer> TimerQueue::NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    return std::make_unique<QueuedTimer>(*this, interval, std::move(tick));
}

std::optional<std::chrono::microseconds> TimerQueue::NextDue() const {
    std::optional<std::chrono::microseconds> next;
    for (const QueuedTimer* timer : Timers_) {
        if (timer->Due() && (!next || *timer->Due() < *next)) {
            next = timer->Due();
        }
    }
    return next;
}

void TimerQueue::TickDue() {
    struct DueTimer {
        QueuedTimer* Timer;
        std::chrono::microseconds Due;
    };
    const auto now = Clock_();
    std::vector<DueTimer> dueTimers;
    for (QueuedTimer* timer : Timers_) {
        if (timer->Due() && *timer->Due() <= now) {
            dueTimers.push_back({timer, *timer->Due()});
        }
    }
    std::stable_sort(dueTimers.begin(), dueTimers.end(),
                     [](const DueTimer& a, const DueTimer& b) { return a.Due < b.Due; });
    for (const auto& [timer, due] : dueTimers) {
        // An earlier tick may have ended this timer, switched it off or on anew, or run the loop, which
        // ticked it.
        if (std::find(Timers_.begin(), Timers_.end(), timer) != Timers_.end() && timer->Due() == due) {
            timer->TickOnce();
        }
    }
}

}  // namespace burnwick
