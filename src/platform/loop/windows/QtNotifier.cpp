#include <QWinEventNotifier>
#include <utility>

#include "platform/loop/qt/QtNotifier.h"
#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

namespace {

class NotifiedWatch final : public Watch {
public:
    NotifiedWatch(HANDLE event, std::function<void()> ready) : Notifier_(event) {
        QObject::connect(&Notifier_, &QWinEventNotifier::activated, &Notifier_, std::move(ready));
    }

private:
    QWinEventNotifier Notifier_;
};

}  // namespace

std::unique_ptr<Watch> WatchWithNotifier(WaitHandle handle, std::function<void()> ready) {
    return std::make_unique<NotifiedWatch>(reinterpret_cast<HANDLE>(handle), std::move(ready));
}

}  // namespace burnwick
