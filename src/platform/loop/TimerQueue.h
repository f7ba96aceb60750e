#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// The timers of one message loop: what every system's loop does the same way.
class TimerQueue {
public:
    // Time since an arbitrary start.
    using Clock = std::function<std::chrono::microseconds()>;

    explicit TimerQueue(Clock clock);
    ~TimerQueue();

    // The queue must outlive the timer.
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick);

    // When the next tick falls due, on the queue's clock; nothing when every timer is off.
    std::optional<std::chrono::microseconds> NextDue() const;

    // Ticks each timer that is due, once, in the order of their due times. Ticks may switch timers on and off
    // and may run the loop again.
    void TickDue();

private:
    class QueuedTimer;

    Clock Clock_;
    std::vector<QueuedTimer*> Timers_;
};

}  // namespace burnwick
