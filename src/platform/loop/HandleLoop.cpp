#include "platform/loop/HandleLoop.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace burnwick {

namespace {

std::chrono::microseconds MonotonicTime() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

struct HandleLoop::Watched {
    WaitHandle Handle;
    std::function<void()> Ready;
    bool Ended = false;    // its Watch is gone
    bool ForEver = false;  // it would be "ready" for ever: waited for no more
};

class HandleLoop::ListedWatch final : public Watch {
public:
    ListedWatch(HandleLoop& loop, std::shared_ptr<Watched> watched)
        : Loop_(loop), Watched_(std::move(watched)) {
        Loop_.Watched_.push_back(Watched_);
    }
    ListedWatch(const ListedWatch&) = delete;
    ListedWatch& operator=(const ListedWatch&) = delete;
    ~ListedWatch() override {
        Watched_->Ended = true;
        std::erase(Loop_.Watched_, Watched_);
    }

private:
    HandleLoop& Loop_;
    std::shared_ptr<Watched> Watched_;
};

HandleLoop::HandleLoop() : Timers_(MonotonicTime) {}

HandleLoop::~HandleLoop() = default;

void HandleLoop::Yield(std::chrono::microseconds atMost) {
    ++Yields_;
    const Round round = WatchedNow();
    Handles_.clear();
    std::transform(round.begin(), round.end(), std::back_inserter(Handles_),
                   [](const auto& watched) { return watched->Handle; });
    if (Sleep(Handles_, SleepTime(atMost))) {
        CallReady(round);
    }
    Timers_.TickDue();
}

std::chrono::milliseconds HandleLoop::MillisecondClock() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(MonotonicTime());
}

std::unique_ptr<Timer> HandleLoop::NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    return Timers_.NewTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> HandleLoop::WatchInput(WaitHandle handle, std::function<void()> ready) {
    auto watched = std::make_shared<Watched>(Watched{handle, std::move(ready)});
    return std::make_unique<ListedWatch>(*this, std::move(watched));
}

HandleLoop::Round HandleLoop::WatchedNow() const {
    Round round;
    std::copy_if(Watched_.begin(), Watched_.end(), std::back_inserter(round),
                 [](const auto& watched) { return !watched->ForEver; });
    return round;
}

std::chrono::microseconds HandleLoop::SleepTime(std::chrono::microseconds atMost) const {
    auto time = atMost;
    if (const auto due = Timers_.NextDue()) {
        time = std::min(time, *due - MonotonicTime());
    }
    return std::max(time, std::chrono::microseconds::zero());
}

void HandleLoop::CallReady(const Round& round) {
    const unsigned thisYield = Yields_;
    for (std::size_t i = 0; i < round.size(); ++i) {
        Watched& watched = *round[i];
        const auto state = watched.Ended ? Readiness::NotReady : StateOf(i);
        if (state == Readiness::NotReady) {
            continue;
        }
        watched.ForEver = state == Readiness::ReadyForEver;
        watched.Ready();
        // A callback that ran the loop itself has handled the others too; what is still ready shows next
        // time.
        if (Yields_ != thisYield) {
            return;
        }
    }
}

}  // namespace burnwick
