#include "platform/linux/PollLoop.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace burnwick {

namespace {

std::chrono::microseconds MonotonicTime() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec)
           + std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::nanoseconds(now.tv_nsec));
}

timespec ToTimespec(std::chrono::microseconds time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    return {static_cast<time_t>(seconds.count()), static_cast<long>(rest.count())};
}

}  // namespace

struct PollLoop::Watched {
    int Fd;
    std::function<void()> Ready;
    bool Ended = false;   // its Watch is gone
    bool HungUp = false;  // it would be "ready" for ever: waited for no more
    short Events = 0;     // what the latest ppoll() told
};

class PollLoop::ListedWatch final : public Watch {
public:
    ListedWatch(PollLoop& loop, std::shared_ptr<Watched> watched)
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
    PollLoop& Loop_;
    std::shared_ptr<Watched> Watched_;
};

PollLoop::PollLoop() : Timers_(MonotonicTime) {}

PollLoop::~PollLoop() = default;

void PollLoop::Yield(std::chrono::microseconds atMost) {
    const Round round = WatchedNow();
    std::vector<pollfd> fds;
    fds.reserve(round.size());
    for (const auto& watched : round) {
        fds.push_back({watched->Fd, POLLIN, 0});
    }
    const timespec timeout = ToTimespec(SleepTime(atMost));
    // An interrupted wait is over like one that timed out: the caller looks at its clock and comes again.
    if (ppoll(fds.data(), fds.size(), &timeout, nullptr) > 0) {
        for (std::size_t i = 0; i < fds.size(); ++i) {
            round[i]->Events = fds[i].revents;
        }
        HandleReady(round);
    }
    Timers_.TickDue();
}

std::chrono::milliseconds PollLoop::MillisecondClock() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(MonotonicTime());
}

std::tm PollLoop::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

std::unique_ptr<Timer> PollLoop::NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    return Timers_.NewTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> PollLoop::WatchInput(WaitHandle handle, std::function<void()> ready) {
    auto watched = std::make_shared<Watched>(Watched{static_cast<int>(handle), std::move(ready)});
    return std::make_unique<ListedWatch>(*this, std::move(watched));
}

PollLoop::Round PollLoop::WatchedNow() const {
    Round round;
    std::copy_if(Watched_.begin(), Watched_.end(), std::back_inserter(round),
                 [](const auto& watched) { return !watched->HungUp; });
    return round;
}

std::chrono::microseconds PollLoop::SleepTime(std::chrono::microseconds atMost) const {
    auto time = atMost;
    if (const auto due = Timers_.NextDue()) {
        time = std::min(time, *due - MonotonicTime());
    }
    return std::max(time, std::chrono::microseconds::zero());
}

void PollLoop::HandleReady(const Round& round) {
    const unsigned thisRound = ++Rounds_;
    for (const auto& watched : round) {
        // A callback that ran the loop itself has handled the others too; what is still ready shows next
        // time.
        if (Rounds_ != thisRound) {
            return;
        }
        if (watched->Ended || watched->Events == 0) {
            continue;
        }
        watched->HungUp = (watched->Events & (POLLHUP | POLLERR | POLLNVAL)) != 0;
        watched->Ready();
    }
}

}  // namespace burnwick
