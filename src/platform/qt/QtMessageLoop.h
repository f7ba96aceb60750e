#pragma once

#include <QTimer>
#include <memory>
#include <optional>

#include "platform/MessageLoop.h"
#include "platform/TimerQueue.h"
#include "platform/qt/EventRound.h"

namespace burnwick {

// The message loop of a program with windows: a Yield is one round of Qt's event loop.
class QtMessageLoop final : public MessageLoop {
public:
    QtMessageLoop();
    QtMessageLoop(const QtMessageLoop&) = delete;
    QtMessageLoop& operator=(const QtMessageLoop&) = delete;
    ~QtMessageLoop() override;

    void Yield(std::chrono::microseconds atMost) override;
    std::chrono::milliseconds MillisecondClock() const override;
    std::tm Now() const override;
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override;

private:
    class WakingTimer;
    class Call;

    // True in a Yield itself, false in a dialog or other event loop that runs inside it.
    bool InYieldItself() const;
    void WokenUp();
    void TickDue();
    void WakeForTimers();
    void WakeBy(std::chrono::microseconds time);

    std::unique_ptr<MessageLoop> System_;
    TimerQueue Timers_;
    QTimer WakeUp_;
    std::optional<std::chrono::microseconds> WakesAt_;
    Call* Innermost_ = nullptr;
    std::unique_ptr<EventRound> Round_;  // its end may let events happen
};

}  // namespace burnwick
