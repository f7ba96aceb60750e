#include "simulator/Server.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace simulator {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// How long a sleeper may take to wake, about a byte's time at the highest speed.
constexpr Time WakingTime = 90us;

sigset_t EndingSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    return signals;
}

FileDescriptor OpenSignals() {
    const auto signals = EndingSignals();
    const int descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot wait for signals");
    }
    return FileDescriptor(descriptor);
}

class Exchange {
public:
    Exchange(PseudoTerminal& terminal, Line& line, const Unit& unit)
        : Terminal_(terminal), Line_(line), Unit_(unit), HostBaud_(terminal.HostBaud()) {}

    // Moves everything that can move now.
    void Run() {
        const auto now = Now();
        const unsigned before = std::exchange(HostBaud_, Terminal_.HostBaud());
        for (auto bytes = Terminal_.Read(); !bytes.empty(); bytes = Terminal_.Read()) {
            Line_.FromHost(now, SpeedOfBytes(before), bytes);
        }
        const auto arrived = Line_.ToHost(now, HostBaud_);
        Pending_.insert(Pending_.end(), arrived.begin(), arrived.end());
        if (!Pending_.empty()) {
            const auto written = Terminal_.Write(Pending_);
            Pending_.erase(Pending_.begin(), Pending_.begin() + static_cast<std::ptrdiff_t>(written));
        }
    }

    // Sleeps until something can move. False when a signal asks for the end.
    bool Wait(int signals) const {
        const auto events = static_cast<short>(Pending_.empty() ? POLLIN : POLLIN | POLLOUT);
        std::array<pollfd, 2> watched = {{{Terminal_.Descriptor(), events, 0}, {signals, POLLIN, 0}}};
        timespec timeout{};
        const auto next = Line_.NextEvent();
        if (next) {
            const auto rest = std::max(*next - Now() - WakingTime, Time(0));
            const auto seconds = std::chrono::floor<std::chrono::seconds>(rest);
            timeout.tv_sec = seconds.count();
            timeout.tv_nsec = std::chrono::nanoseconds(rest - seconds).count();
        }
        const int ready = ppoll(watched.data(), watched.size(), next ? &timeout : nullptr, nullptr);
        while (ready == 0 && next && Now() < *next) {
            // awake already, and too close to sleep again
        }
        return watched[1].revents == 0;
    }

private:
    // Bytes and a change of speed may both have come since the last look, and nothing tells their order: a
    // host that closes after its last word puts the old speed back at once. So bytes may fit either.
    unsigned SpeedOfBytes(unsigned before) const { return before == Unit_.Baud() ? before : HostBaud_; }

    Time Now() const { return std::chrono::floor<Time>(Clock::now() - Start_); }

    PseudoTerminal& Terminal_;
    Line& Line_;
    const Unit& Unit_;
    unsigned HostBaud_;
    Clock::time_point Start_ = Clock::now();
    std::vector<std::byte> Pending_;  // what the host has no room for yet
};

}  // namespace

void PrepareSignals() {
    const auto signals = EndingSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

void Serve(PseudoTerminal& terminal, Line& line, const Unit& unit, const std::function<void()>& onRestart) {
    // The system otherwise lets a sleeper lie on by up to 50 us, half a byte at the highest speed.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    const auto signals = OpenSignals();
    Exchange exchange(terminal, line, unit);
    int restarts = 0;
    do {
        exchange.Run();
        if (restarts != unit.Journal().Restarts) {
            restarts = unit.Journal().Restarts;
            onRestart();
        }
    } while (exchange.Wait(signals.Get()));
}

}  // namespace simulator
