#include "platform/loop/linux/PollLoop.h"

namespace burnwick {

namespace {

timespec ToTimespec(std::chrono::microseconds time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    return {static_cast<time_t>(seconds.count()), static_cast<long>(rest.count())};
}

}  // namespace

std::tm PollLoop::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

bool PollLoop::Sleep(std::span<const WaitHandle> handles, std::chrono::microseconds atMost) {
    Fds_.clear();
    for (const WaitHandle handle : handles) {
        Fds_.push_back({static_cast<int>(handle), POLLIN, 0});
    }
    const timespec timeout = ToTimespec(atMost);
    // An interrupted wait is over like one that timed out: the caller looks at its clock and comes again.
    return ppoll(Fds_.data(), Fds_.size(), &timeout, nullptr) > 0;
}

HandleLoop::Readiness PollLoop::StateOf(std::size_t index) {
    const short events = Fds_[index].revents;
    if (events == 0) {
        return Readiness::NotReady;
    }
    return (events & (POLLHUP | POLLERR | POLLNVAL)) != 0 ? Readiness::ReadyForEver : Readiness::Ready;
}

std::unique_ptr<MessageLoop> NewSystemLoop() {
    return std::make_unique<PollLoop>();
}

}  // namespace burnwick
