#include "platform/qt/QtWatch.h"

#include <QThread>
#include <QWinEventNotifier>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/windows/SystemHeaders.h"
#include "platform/windows/WatchRound.h"

namespace burnwick {

namespace {

class NotifiedWatch;

// Of the windows' thread, the only one that has any.
std::vector<NotifiedWatch*> Watches;
const WatchRound* Innermost = nullptr;

// Ready while its handle, an event that does not reset itself, is set.
class NotifiedWatch final : public Watch {
public:
    NotifiedWatch(HANDLE handle, std::function<void()> ready)
        : Ready_(std::make_shared<std::function<void()>>(std::move(ready))), Notifier_(handle) {
        QObject::connect(&Notifier_, &QWinEventNotifier::activated, &Notifier_, [this] { Look(); });
        Watches.push_back(this);
    }
    NotifiedWatch(const NotifiedWatch&) = delete;
    NotifiedWatch& operator=(const NotifiedWatch&) = delete;
    ~NotifiedWatch() override { std::erase(Watches, this); }

    // True when it has called.
    bool Look() {
        const WatchRound* const round = WatchRound::Now();
        if (!Notifier_.isEnabled() || (round != nullptr && round == Called_)) {
            return false;
        }
        // The notifier tells of what was; it may have been taken meanwhile.
        const DWORD state = WaitForSingleObject(Notifier_.handle(), 0);
        if (state == WAIT_TIMEOUT) {
            return false;
        }
        // No handle any longer: it is called once, to find that out.
        if (state == WAIT_FAILED) {
            Notifier_.setEnabled(false);
        }
        Called_ = round;
        // Held here too, for the call may end this watch.
        const auto ready = Ready_;
        (*ready)();
        if (const WatchRound* const now = WatchRound::Now()) {
            now->TellOfCall();
        }
        return true;
    }

    void Forget(const WatchRound* round) {
        if (Called_ == round) {
            Called_ = nullptr;
        }
    }

private:
    std::shared_ptr<std::function<void()>> Ready_;
    QWinEventNotifier Notifier_;
    const WatchRound* Called_ = nullptr;  // the round in which it called last
};

int LoopLevel() {
    return QThread::currentThread()->loopLevel();
}

}  // namespace

WatchRound::WatchRound(std::function<void()> called)
    : Called_(std::move(called)), Level_(LoopLevel()), Outer_(std::exchange(Innermost, this)) {}

WatchRound::~WatchRound() {
    Innermost = Outer_;
    for (NotifiedWatch* watch : Watches) {
        watch->Forget(this);
    }
}

const WatchRound* WatchRound::Now() {
    return Innermost != nullptr && Innermost->Level_ == LoopLevel() ? Innermost : nullptr;
}

// A notifier hears of its handle from another thread, and may not have told yet.
bool WatchRound::LookAtAll() const {
    bool any = false;
    for (NotifiedWatch* watch : std::vector(Watches)) {
        // A call may end any watch.
        if (std::find(Watches.begin(), Watches.end(), watch) != Watches.end()) {
            any = watch->Look() || any;
        }
    }
    return any;
}

std::unique_ptr<Watch> WatchInEventLoop(WaitHandle handle, std::function<void()> ready) {
    return std::make_unique<NotifiedWatch>(reinterpret_cast<HANDLE>(handle), std::move(ready));
}

}  // namespace burnwick
