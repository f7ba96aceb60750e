#include <QTimer>
#include <utility>

#include "platform/loop/MessageLoop.h"
#include "platform/loop/WindowLoop.h"
#include "platform/loop/qt/QtNotifier.h"

namespace burnwick {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
        Timer_.setInterval(interval);
        QObject::connect(&Timer_, &QTimer::timeout, &Timer_, std::move(tick));
    }

    void SetEnabled(bool enabled) override {
        if (enabled) {
            Timer_.start();
        } else {
            Timer_.stop();
        }
    }

    // The toolkit's timer does not make up for missed ticks.
    void SkipMissedTicks() override {}

private:
    QTimer Timer_;
};

class QtEventLoop final : public EventLoop {
public:
    std::chrono::milliseconds MillisecondClock() const override { return Clock_->MillisecondClock(); }
    std::tm Now() const override { return Clock_->Now(); }
    std::unique_ptr<Timer> NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        return std::make_unique<QtTimer>(interval, std::move(tick));
    }
    std::unique_ptr<Watch> WatchInput(WaitHandle handle, std::function<void()> ready) override {
        return WatchWithNotifier(handle, std::move(ready));
    }

private:
    std::unique_ptr<MessageLoop> Clock_ = NewSystemLoop();
};

}  // namespace

std::unique_ptr<EventLoop> NewWindowLoop() {
    return std::make_unique<QtEventLoop>();
}

}  // namespace burnwick
