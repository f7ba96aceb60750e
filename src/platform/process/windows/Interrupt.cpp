#include "platform/process/Interrupt.h"

#include <atomic>
#include <utility>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

// The system calls its handler on a thread of its own, also while the process ends: what that touches is
// never taken away.
struct Requests {
    HANDLE Arrived = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> Waiting = 0;
    bool Held = false;
};

Requests& Arrivals() {
    static auto* const arrivals = new Requests;
    return *arrivals;
}

BOOL WINAPI OnRequest(DWORD kind) {
    auto& arrivals = Arrivals();
    ++arrivals.Waiting;
    SetEvent(arrivals.Arrived);
    if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) {
        // A closed console or a system going down ends the process when this returns: it is left those few
        // seconds to end by itself.
        Sleep(INFINITE);
    }
    return TRUE;
}

class ConsoleInterrupt final : public Interrupt {
public:
    ConsoleInterrupt(EventLoop& loop, std::function<void()> request) : Request_(std::move(request)) {
        auto& arrivals = Arrivals();
        if (!arrivals.Held) {
            SetConsoleCtrlHandler(OnRequest, TRUE);
        }
        Watch_ = loop.WatchInput(reinterpret_cast<WaitHandle>(arrivals.Arrived), [this] { HandOver(); });
    }
    ConsoleInterrupt(const ConsoleInterrupt&) = delete;
    ConsoleInterrupt& operator=(const ConsoleInterrupt&) = delete;

    ~ConsoleInterrupt() override {
        auto& arrivals = Arrivals();
        if (!arrivals.Held) {
            SetConsoleCtrlHandler(OnRequest, FALSE);
        }
        // One that came too late to be handed over is dropped: the outcome is about to be told.
        TakeAll();
    }

private:
    static int TakeAll() {
        auto& arrivals = Arrivals();
        // In this order none is lost: one that comes in between sets the event anew.
        ResetEvent(arrivals.Arrived);
        return arrivals.Waiting.exchange(0);
    }

    void HandOver() {
        for (int left = TakeAll(); left > 0; --left) {
            Request_();
        }
    }

    std::function<void()> Request_;
    std::unique_ptr<Watch> Watch_;
};

}  // namespace

void HoldInterrupts() {
    auto& arrivals = Arrivals();
    if (!arrivals.Held) {
        arrivals.Held = SetConsoleCtrlHandler(OnRequest, TRUE) != 0;
    }
}

std::unique_ptr<Interrupt> CatchInterrupts(EventLoop& loop, std::function<void()> request) {
    return std::make_unique<ConsoleInterrupt>(loop, std::move(request));
}

}  // namespace burnwick
