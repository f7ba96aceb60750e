#include "platform/windows/WaitLoop.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace burnwick {

namespace {

using Ticks = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;

// A Yield may end early; no timer of the system knows longer times than this one.
constexpr auto longestSleep = std::chrono::hours(24);

constexpr std::size_t mostHandles = MAXIMUM_WAIT_OBJECTS - 1;

std::chrono::microseconds MonotonicTime() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

// A time-out of the wait itself is as coarse as the system's own clock, 16 ms; half a character must not take
// that long. Systems before the high resolution give a timer that is no better, but serves.
HANDLE NewAlarm() {
    constexpr DWORD highResolution = 0x00000002;
    HANDLE alarm = CreateWaitableTimerExW(nullptr, nullptr, highResolution, TIMER_ALL_ACCESS);
    return alarm != nullptr ? alarm : CreateWaitableTimerExW(nullptr, nullptr, 0, TIMER_ALL_ACCESS);
}

bool SetAlarm(HANDLE alarm, std::chrono::microseconds time) {
    LARGE_INTEGER due{};
    due.QuadPart = -std::chrono::duration_cast<Ticks>(time).count();
    return alarm != nullptr && SetWaitableTimer(alarm, &due, 0, nullptr, nullptr, FALSE) != FALSE;
}

}  // namespace

struct WaitLoop::Watched {
    HANDLE Handle;
    std::function<void()> Ready;
    bool Ended = false;   // its Watch is gone
    bool Broken = false;  // no handle, or no longer one: waited for no more
};

class WaitLoop::ListedWatch final : public Watch {
public:
    ListedWatch(WaitLoop& loop, std::shared_ptr<Watched> watched)
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
    WaitLoop& Loop_;
    std::shared_ptr<Watched> Watched_;
};

WaitLoop::WaitLoop() : Timers_(MonotonicTime), Alarm_(NewAlarm()) {}

WaitLoop::~WaitLoop() = default;

void WaitLoop::Yield(std::chrono::microseconds atMost) {
    const Round round = WatchedNow();
    const DWORD woken = Wait(round, SleepTime(atMost));
    if (woken == WAIT_FAILED) {
        HandleBroken(round);
    } else if (woken < WAIT_OBJECT_0 + round.size()) {
        HandleReady(round, woken - WAIT_OBJECT_0);
    }
    Timers_.TickDue();
}

std::chrono::milliseconds WaitLoop::MillisecondClock() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(MonotonicTime());
}

std::tm WaitLoop::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_s(&local, &now);
    return local;
}

std::unique_ptr<Timer> WaitLoop::NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    return Timers_.NewTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> WaitLoop::WatchInput(WaitHandle handle, std::function<void()> ready) {
    auto watched = std::make_shared<Watched>(Watched{reinterpret_cast<HANDLE>(handle), std::move(ready)});
    return std::make_unique<ListedWatch>(*this, std::move(watched));
}

WaitLoop::Round WaitLoop::WatchedNow() const {
    Round round;
    std::copy_if(Watched_.begin(), Watched_.end(), std::back_inserter(round),
                 [](const auto& watched) { return !watched->Broken; });
    round.resize(std::min(round.size(), mostHandles));
    return round;
}

std::chrono::microseconds WaitLoop::SleepTime(std::chrono::microseconds atMost) const {
    auto time = std::min<std::chrono::microseconds>(atMost, longestSleep);
    if (const auto due = Timers_.NextDue()) {
        time = std::min(time, *due - MonotonicTime());
    }
    return std::max(time, std::chrono::microseconds::zero());
}

// The index of the first handle that is ready, WAIT_FAILED, or any other number when the time is over.
DWORD WaitLoop::Wait(const Round& round, std::chrono::microseconds atMost) {
    std::vector<HANDLE> handles;
    handles.reserve(round.size() + 1);
    std::transform(round.begin(), round.end(), std::back_inserter(handles),
                   [](const auto& watched) { return watched->Handle; });
    auto timeout = static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(atMost).count());
    if (timeout > 0 && SetAlarm(Alarm_.Get(), atMost)) {
        handles.push_back(Alarm_.Get());
        timeout = INFINITE;
    }
    if (handles.empty()) {
        Sleep(timeout);
        return WAIT_TIMEOUT;
    }
    return WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, timeout);
}

// The wait has taken the first handle's signal; those behind it are asked in their turn, each just before its
// call, since asking takes an event that resets itself.
void WaitLoop::HandleReady(const Round& round, std::size_t first) {
    const unsigned thisRound = ++Rounds_;
    for (std::size_t i = first; i < round.size(); ++i) {
        // A callback that ran the loop itself has handled the others too; what is still ready shows next
        // time.
        if (Rounds_ != thisRound) {
            return;
        }
        const auto& watched = round[i];
        if (!watched->Ended && (i == first || WaitForSingleObject(watched->Handle, 0) == WAIT_OBJECT_0)) {
            watched->Ready();
        }
    }
}

// One of them is no handle: it is called once, to find that out, and no wait is tried with it again.
void WaitLoop::HandleBroken(const Round& round) {
    for (const auto& watched : round) {
        if (!watched->Ended && WaitForSingleObject(watched->Handle, 0) == WAIT_FAILED) {
            watched->Broken = true;
            watched->Ready();
        }
    }
}

}  // namespace burnwick
