#include "platform/qt/QtWatch.h"

#include <poll.h>

#include <QSocketNotifier>
#include <utility>

namespace burnwick {

namespace {

class NotifiedWatch final : public Watch {
public:
    NotifiedWatch(int fd, std::function<void()> ready)
        : Ready_(std::make_shared<std::function<void()>>(std::move(ready))),
          Notifier_(fd, QSocketNotifier::Read) {
        QObject::connect(&Notifier_, &QSocketNotifier::activated, &Notifier_, [this] { Activated(); });
    }

private:
    void Activated() {
        pollfd now{static_cast<int>(Notifier_.socket()), POLLIN, 0};
        // What was there may have been taken meanwhile, in the call of another watch.
        if (poll(&now, 1, 0) <= 0) {
            return;
        }
        // It would be "ready" for ever.
        if ((now.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
            Notifier_.setEnabled(false);
        }
        // Held here too, for the call may end this watch.
        const auto ready = Ready_;
        (*ready)();
    }

    std::shared_ptr<std::function<void()>> Ready_;
    QSocketNotifier Notifier_;
};

}  // namespace

std::unique_ptr<Watch> WatchInEventLoop(WaitHandle handle, std::function<void()> ready) {
    return std::make_unique<NotifiedWatch>(static_cast<int>(handle), std::move(ready));
}

}  // namespace burnwick
