#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/MessageLoop.h"

namespace burnwick::test {

// Another loop, with somebody who looks on.
class WatchedLoop : public MessageLoop {
public:
    explicit WatchedLoop(MessageLoop& loop) : Loop_(loop) {}

    void Yield(std::chrono::microseconds atMost) override {
        Loop_.Yield(atMost);
        Look();
    }
    std::chrono::milliseconds MillisecondClock() const override { return Loop_.MillisecondClock(); }
    std::tm Now() const override { return Loop_.Now(); }
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        return Loop_.NewTimer(interval, std::move(tick));
    }
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override {
        return Loop_.WatchInput(handle, [this, ready = std::move(ready)] {
            ready();
            Look();
        });
    }

    // Called after each Yield, and after each callback of a watch.
    std::function<void()> Look = [] {};

protected:
    MessageLoop& Loop_;
};

}  // namespace burnwick::test
