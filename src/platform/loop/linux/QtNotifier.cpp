#include <QSocketNotifier>
#include <utility>

#include "platform/loop/qt/QtNotifier.h"

namespace burnwick {

namespace {

class NotifiedWatch final : public Watch {
public:
    NotifiedWatch(int fd, std::function<void()> ready) : Notifier_(fd, QSocketNotifier::Read) {
        QObject::connect(&Notifier_, &QSocketNotifier::activated, &Notifier_, std::move(ready));
    }

private:
    QSocketNotifier Notifier_;
};

}  // namespace

std::unique_ptr<Watch> WatchWithNotifier(WaitHandle handle, std::function<void()> ready) {
    return std::make_unique<NotifiedWatch>(static_cast<int>(handle), std::move(ready));
}

}  // namespace burnwick
