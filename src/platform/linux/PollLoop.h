#pragma once

#include <memory>
#include <vector>

#include "platform/MessageLoop.h"
#include "platform/TimerQueue.h"

namespace burnwick {

// The message loop of a program without a window: one ppoll() a Yield.
class PollLoop final : public MessageLoop {
public:
    PollLoop();
    PollLoop(const PollLoop&) = delete;
    PollLoop& operator=(const PollLoop&) = delete;
    ~PollLoop() override;

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
    void HandleReady(const Round& round);

    TimerQueue Timers_;
    std::vector<std::shared_ptr<Watched>> Watched_;
    unsigned Rounds_ = 0;
};

}  // namespace burnwick
