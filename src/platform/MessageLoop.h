#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>

namespace burnwick {

// What the system can wait for: a file descriptor, or a Windows event handle.
using WaitHandle = std::intptr_t;

// A repeating timer whose ticks are handled inside MessageLoop::Yield. Ends with its object.
class Timer {
public:
    virtual ~Timer() = default;

    // Switching on starts a whole interval anew; switching off drops ticks not yet handled.
    virtual void SetEnabled(bool enabled) = 0;

    // Forgets the ticks that fell due but were not handled, after the machine stalled.
    virtual void SkipMissedTicks() = 0;
};

// Calls back while its handle has something to read. Ends with its object.
class Watch {
public:
    virtual ~Watch() = default;
};

// Time and patience: every wait of the program is a Yield, and none of them spins.
class MessageLoop {
public:
    virtual ~MessageLoop() = default;

    // Sleeps until something happens (input, a due timer, a window event), at most so long, and handles it.
    // A timer ticks at most once in one call: who looks at a count of ticks after each call sees every value.
    virtual void Yield(std::chrono::microseconds atMost) = 0;

    // Milliseconds from an arbitrary start; never set back, and blind to changes of the date.
    virtual std::chrono::milliseconds MillisecondClock() const = 0;

    // The local date and time.
    virtual std::tm Now() const = 0;

    // The timer starts switched off.
    virtual std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval,
                                            std::function<void()> tick) = 0;

    // `ready` must take what is there to read: the handle is looked at again on the next Yield.
    virtual std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) = 0;
};

}  // namespace burnwick
