#pragma once

#include <memory>
#include <vector>

#include "platform/MessageLoop.h"
#include "platform/TimerQueue.h"
#include "platform/windows/UniqueHandle.h"

namespace burnwick {

// The message loop of a program without a window: one WaitForMultipleObjects() a Yield. Handles are those
// that the system can wait for, events above all; it waits for the first 63 of them.
class WaitLoop final : public MessageLoop {
public:
    WaitLoop();
    WaitLoop(const WaitLoop&) = delete;
    WaitLoop& operator=(const WaitLoop&) = delete;
    ~WaitLoop() override;

    void Yield(std::chrono::microseconds atMost) override;
    std::chrono::milliseconds MillisecondClock() const override;
    std::tm Now() const override;
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override;

private:
    struct Watched;
    class ListedWatch;

    // What was waited for in one Yield; shared, for a callback may end any watch, its own included.
    using Round = std::vector<std::shared_ptr<Watched>>;

    Round WatchedNow() const;
    std::chrono::microseconds SleepTime(std::chrono::microseconds atMost) const;
    DWORD Wait(const Round& round, std::chrono::microseconds atMost);
    void HandleReady(const Round& round, std::size_t first);
    void HandleBroken(const Round& round);

    TimerQueue Timers_;
    UniqueHandle Alarm_;
    std::vector<std::shared_ptr<Watched>> Watched_;
    unsigned Rounds_ = 0;
};

}  // namespace burnwick
