#pragma once

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <utility>

#include "platform/loop/MessageLoop.h"

namespace burnwick::test {

// A job's loop on the window's thread: each Yield handles the window's events too, and calls Look.
class GuiLoop final : public MessageLoop {
public:
    explicit GuiLoop(MessageLoop& loop) : Loop_(loop) {}

    void Yield(std::chrono::microseconds atMost) override {
        QCoreApplication::processEvents();
        Loop_.Yield(atMost);
        QCoreApplication::processEvents();
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

private:
    MessageLoop& Loop_;
};

}  // namespace burnwick::test
