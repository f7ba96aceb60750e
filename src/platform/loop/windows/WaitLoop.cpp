#include "platform/loop/windows/WaitLoop.h"

#include <algorithm>

namespace burnwick {

namespace {

using Ticks = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;

// A Yield may end early; no timer of the system knows longer times than this one.
constexpr auto longestSleep = std::chrono::hours(24);

constexpr std::size_t mostHandles = MAXIMUM_WAIT_OBJECTS - 1;

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

WaitLoop::WaitLoop() : Alarm_(NewAlarm()) {}

std::tm WaitLoop::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_s(&local, &now);
    return local;
}

bool WaitLoop::Sleep(std::span<const WaitHandle> handles, std::chrono::microseconds atMost) {
    Asked_.clear();
    for (const WaitHandle handle : handles) {
        Asked_.push_back(reinterpret_cast<HANDLE>(handle));
    }
    const auto awaited = std::min(Asked_.size(), mostHandles);
    const DWORD woken = Wait({Asked_.begin(), Asked_.begin() + static_cast<std::ptrdiff_t>(awaited)},
                             std::min<std::chrono::microseconds>(atMost, longestSleep));
    Taken_.reset();
    if (woken < WAIT_OBJECT_0 + awaited) {
        Taken_ = woken - WAIT_OBJECT_0;
    }
    // One of them is no handle, when the wait has failed: each is asked.
    return Taken_ || woken == WAIT_FAILED;
}

// Asking takes the signal of an event that resets itself.
HandleLoop::Readiness WaitLoop::StateOf(std::size_t index) {
    if (Taken_ && index <= *Taken_) {
        return index == *Taken_ ? Readiness::Ready : Readiness::NotReady;
    }
    switch (WaitForSingleObject(Asked_[index], 0)) {
        case WAIT_OBJECT_0:
            return Readiness::Ready;
        case WAIT_FAILED:
            return Readiness::ReadyForEver;
        default:
            return Readiness::NotReady;
    }
}

// The index of the first handle that is ready, WAIT_FAILED, or any other number when the time is over.
DWORD WaitLoop::Wait(std::vector<HANDLE> handles, std::chrono::microseconds atMost) {
    auto timeout = static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(atMost).count());
    if (timeout > 0 && SetAlarm(Alarm_.Get(), atMost)) {
        handles.push_back(Alarm_.Get());
        timeout = INFINITE;
    }
    if (handles.empty()) {
        ::Sleep(timeout);
        return WAIT_TIMEOUT;
    }
    return WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, timeout);
}

std::unique_ptr<MessageLoop> NewSystemLoop() {
    return std::make_unique<WaitLoop>();
}

}  // namespace burnwick
