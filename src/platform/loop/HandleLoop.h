#pragma once

#include <memory>
#include <span>
#include <vector>

#include "platform/loop/MessageLoop.h"
#include "platform/loop/TimerQueue.h"

namespace burnwick {

// A message loop that sleeps in one call of the system. Its timers and watches are kept here, where every
// system has the same rules for them; a system's own loop adds the calls.
class HandleLoop : public MessageLoop {
public:
    HandleLoop();
    HandleLoop(const HandleLoop&) = delete;
    HandleLoop& operator=(const HandleLoop&) = delete;
    ~HandleLoop() override;

    void Yield(std::chrono::microseconds atMost) final;
    std::chrono::milliseconds MillisecondClock() const final;
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) final;
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) final;

protected:
    enum class Readiness {
        NotReady,
        Ready,
        ReadyForEver,  // hung up, or no handle: called this once, and never waited for again
    };

private:
    struct Watched;
    class ListedWatch;

    // What was waited for in one Yield; shared, for a callback may end any watch, its own included.
    using Round = std::vector<std::shared_ptr<Watched>>;

    // Sleeps until a handle is ready, at most so long. False when none is: the time is over, or something
    // else has ended the sleep.
    virtual bool Sleep(std::span<const WaitHandle> handles, std::chrono::microseconds atMost) = 0;

    // What there is of a handle that the latest Sleep was given. Asked in their order, each once at most and
    // just before its call.
    virtual Readiness StateOf(std::size_t index) = 0;

    Round WatchedNow() const;
    std::chrono::microseconds SleepTime(std::chrono::microseconds atMost) const;
    void CallReady(const Round& round);

    TimerQueue Timers_;
    std::vector<std::shared_ptr<Watched>> Watched_;
    std::vector<WaitHandle> Handles_;
    unsigned Yields_ = 0;
};

}  // namespace burnwick
