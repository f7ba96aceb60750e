#include "platform/process/Interrupt.h"

#include <sys/signalfd.h>

#include <csignal>
#include <utility>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick {

namespace {

bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t SignalsThatEnd() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    // Under nohup a closed terminal is no reason to end, and a blocked signal would come in spite of that.
    if (!IsIgnored(SIGHUP)) {
        sigaddset(&signals, SIGHUP);
    }
    return signals;
}

class SignalInterrupt final : public Interrupt {
public:
    SignalInterrupt(EventLoop& loop, std::function<void()> request)
        : Signals_(SignalsThatEnd()),
          Fd_(signalfd(-1, &Signals_, SFD_NONBLOCK | SFD_CLOEXEC)),
          Request_(std::move(request)) {
        if (Fd_) {
            pthread_sigmask(SIG_BLOCK, &Signals_, &MaskBefore_);
            Watch_ = loop.WatchInput(Fd_.Get(), [this] { HandOver(); });
        }
    }
    SignalInterrupt(const SignalInterrupt&) = delete;
    SignalInterrupt& operator=(const SignalInterrupt&) = delete;

    ~SignalInterrupt() override {
        if (Fd_) {
            // One that came too late to be handed over must not end the process now: its work is done, and
            // the outcome is about to be told.
            while (TakeOne()) {
            }
            pthread_sigmask(SIG_SETMASK, &MaskBefore_, nullptr);
        }
    }

private:
    bool TakeOne() {
        signalfd_siginfo arrived{};
        return read(Fd_.Get(), &arrived, sizeof arrived) == static_cast<ssize_t>(sizeof arrived);
    }

    void HandOver() {
        while (TakeOne()) {
            Request_();
        }
    }

    sigset_t Signals_;
    UniqueFd Fd_;
    std::function<void()> Request_;
    sigset_t MaskBefore_{};
    std::unique_ptr<Watch> Watch_;
};

}  // namespace

void HoldInterrupts() {
    const sigset_t signals = SignalsThatEnd();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

std::unique_ptr<Interrupt> CatchInterrupts(EventLoop& loop, std::function<void()> request) {
    return std::make_unique<SignalInterrupt>(loop, std::move(request));
}

}  // namespace burnwick
