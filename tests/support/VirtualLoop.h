#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/loop/MessageLoop.h"
#include "platform/loop/TimerQueue.h"

namespace burnwick::test {

using Microseconds = std::chrono::microseconds;

// A message loop in which time passes only while somebody waits: sixty seconds of silence take no time at
// all.
class VirtualLoop final : public MessageLoop {
public:
    // Something beside the timers that makes things happen: a simulated line.
    struct Source {
        std::function<std::optional<Microseconds>()> NextEvent;
        std::function<void()> Happen;
    };

    VirtualLoop();

    void Yield(Microseconds atMost) override;
    std::chrono::milliseconds MillisecondClock() const override;
    // Friday, 11/20/2026, 11:59:30 PM and the time that has passed since.
    std::tm Now() const override;
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override;

    // Virtual time since the loop was made.
    Microseconds Time() const { return Time_; }
    // Runs the action inside the Yield that reaches the moment.
    void At(Microseconds moment, std::function<void()> action);
    void AddSource(const void* owner, Source source) { Sources_.emplace_back(owner, std::move(source)); }
    void RemoveSource(const void* owner);
    // The machine stands still: time passes, and nothing is handled.
    void Stall(Microseconds time) { Time_ += time; }

private:
    Microseconds NextMoment(Microseconds latest) const;
    void RunDueActions();

    Microseconds Time_{0};
    int YieldsWithoutTime_ = 0;
    TimerQueue Timers_;
    std::multimap<Microseconds, std::function<void()>> Actions_;
    std::vector<std::pair<const void*, Source>> Sources_;
};

}  // namespace burnwick::test
