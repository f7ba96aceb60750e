#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>

namespace burnwick {

// A handle that can be waited for: a file descriptor, or a Windows event handle.
using WaitHandle = std::intptr_t;

// A repeating timer whose ticks are called by its event loop. Ends with its object.
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

// The clock, the timers and the watches of a thread's event loop, which a toolkit may run.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    // Milliseconds from an arbitrary start; never set back, and blind to changes of the date.
    virtual std::chrono::milliseconds MillisecondClock() const = 0;

    // The local date and time.
    virtual std::tm Now() const = 0;

    // The timer starts switched off.
    virtual std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval,
                                            std::function<void()> tick) = 0;

    // `ready` must take what is there to read: it is called again as long as there is something.
    virtual std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) = 0;
};

// An event loop that its caller runs: every wait of a job is a Yield, and none of them spins.
class MessageLoop : public EventLoop {
public:
    // Sleeps until something happens (input, a due timer), at most for this time, and handles it. A timer
    // ticks at most once in one call: a caller that looks at a count of ticks after each call sees every
    // value.
    virtual void Yield(std::chrono::microseconds atMost) = 0;
};

// The system's message loop, for a job and for a program without a window.
std::unique_ptr<MessageLoop> NewSystemLoop();

}  // namespace burnwick
