#include "support/VirtualLoop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

// A run that has not ended by then never will.
constexpr Microseconds EndOfTime = 2h;
constexpr int SpinningYields = 100'000;

}  // namespace

VirtualLoop::VirtualLoop() : Timers_([this] { return Time_; }) {}

void VirtualLoop::Yield(Microseconds atMost) {
    const Microseconds before = Time_;
    Time_ = std::max(Time_, NextMoment(Time_ + atMost));
    YieldsWithoutTime_ = Time_ == before ? YieldsWithoutTime_ + 1 : 0;
    if (YieldsWithoutTime_ > SpinningYields) {
        throw std::runtime_error("a wait spins: time stands still");
    }
    if (Time_ > EndOfTime) {
        throw std::runtime_error("a wait does not end");
    }
    for (const auto& [owner, source] : Sources_) {
        source.Happen();
    }
    RunDueActions();
    Timers_.TickDue();
}

std::chrono::milliseconds VirtualLoop::MillisecondClock() const {
    return std::chrono::floor<std::chrono::milliseconds>(Time_);
}

std::tm VirtualLoop::Now() const {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mon = 10;
    time.tm_mday = 20;
    time.tm_hour = 23;
    time.tm_min = 59;
    time.tm_sec = 30 + static_cast<int>(std::chrono::floor<std::chrono::seconds>(Time_).count());
    time.tm_isdst = -1;
    std::mktime(&time);  // carries the seconds over, and finds the day of the week
    return time;
}

std::unique_ptr<Timer> VirtualLoop::NewTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    return Timers_.NewTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> VirtualLoop::WatchInput(WaitHandle /*handle*/, std::function<void()> /*ready*/) {
    throw std::logic_error("no system handle can be waited for in virtual time");
}

void VirtualLoop::At(Microseconds moment, std::function<void()> action) {
    Actions_.emplace(moment, std::move(action));
}

void VirtualLoop::RemoveSource(const void* owner) {
    std::erase_if(Sources_, [owner](const auto& source) { return source.first == owner; });
}

Microseconds VirtualLoop::NextMoment(Microseconds latest) const {
    Microseconds next = latest;
    if (const auto due = Timers_.NextDue()) {
        next = std::min(next, *due);
    }
    if (!Actions_.empty()) {
        next = std::min(next, Actions_.begin()->first);
    }
    for (const auto& [owner, source] : Sources_) {
        if (const auto event = source.NextEvent()) {
            next = std::min(next, *event);
        }
    }
    return next;
}

void VirtualLoop::RunDueActions() {
    while (!Actions_.empty() && Actions_.begin()->first <= Time_) {
        const auto action = std::move(Actions_.begin()->second);
        Actions_.erase(Actions_.begin());
        action();
    }
}

}  // namespace burnwick::test
