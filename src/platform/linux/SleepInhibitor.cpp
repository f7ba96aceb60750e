#include "platform/SleepInhibitor.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>

#include "platform/linux/UniqueFd.h"

namespace burnwick {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto longestWait = std::chrono::milliseconds(500);

// The calls of libsystemd that are needed, found when they are: a program that inhibits nothing starts
// without the library, and one on a system without it runs all the same.
class BusLibrary {
public:
    BusLibrary() : Library_(dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL)) {
        Complete = Library_ != nullptr && Find(Open, "sd_bus_open_system") && Find(IsReady, "sd_bus_is_ready")
                   && Find(Process, "sd_bus_process") && Find(Wait, "sd_bus_wait")
                   && Find(SetTimeout, "sd_bus_set_method_call_timeout") && Find(Call, "sd_bus_call_method")
                   && Find(Read, "sd_bus_message_read") && Find(UnrefMessage, "sd_bus_message_unref")
                   && Find(Close, "sd_bus_close") && Find(Unref, "sd_bus_unref");
    }

    bool Complete = false;
    decltype(&sd_bus_open_system) Open = nullptr;
    decltype(&sd_bus_is_ready) IsReady = nullptr;
    decltype(&sd_bus_process) Process = nullptr;
    decltype(&sd_bus_wait) Wait = nullptr;
    decltype(&sd_bus_set_method_call_timeout) SetTimeout = nullptr;
    decltype(&sd_bus_call_method) Call = nullptr;
    decltype(&sd_bus_message_read) Read = nullptr;
    decltype(&sd_bus_message_unref) UnrefMessage = nullptr;
    decltype(&sd_bus_close) Close = nullptr;
    decltype(&sd_bus_unref) Unref = nullptr;

private:
    template <typename Function>
    bool Find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(Library_, name));
        return function != nullptr;
    }

    void* Library_;  // never unloaded: the library is not made for that
};

// A connection to the system bus.
class SystemBus {
public:
    explicit SystemBus(const BusLibrary& library) : Library_(library) {
        if (Library_.Open(&Bus_) < 0) {
            Bus_ = nullptr;
        }
    }
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;
    ~SystemBus() {
        Library_.Close(Bus_);
        Library_.Unref(Bus_);
    }

    // A call would wait much longer than we do for a bus that does not greet back: wait for that here.
    bool Connect(Clock::time_point limit) {
        while (Bus_ != nullptr && Clock::now() < limit) {
            if (Library_.IsReady(Bus_) > 0) {
                return true;
            }
            const int handled = Library_.Process(Bus_, nullptr);
            if (handled < 0 || (handled == 0 && Library_.Wait(Bus_, MicrosecondsTo(limit)) < 0)) {
                return false;
            }
        }
        return false;
    }

    // A descriptor of our own, which keeps the computer awake while it is open; none when refused.
    UniqueFd Inhibit(const std::string& why, Clock::time_point limit) {
        Library_.SetTimeout(Bus_, MicrosecondsTo(limit));
        sd_bus_message* reply = nullptr;
        const int answered = Library_.Call(Bus_, "org.freedesktop.login1", "/org/freedesktop/login1",
                                           "org.freedesktop.login1.Manager", "Inhibit", nullptr, &reply,
                                           "ssss", "sleep", "Burnwick", why.c_str(), "block");
        int lent = -1;
        UniqueFd kept;
        if (answered >= 0 && Library_.Read(reply, "h", &lent) > 0) {
            kept.Reset(fcntl(lent, F_DUPFD_CLOEXEC, 0));
        }
        Library_.UnrefMessage(reply);
        return kept;
    }

private:
    // At least one: zero stands for the library's own, long limit.
    static uint64_t MicrosecondsTo(Clock::time_point limit) {
        const auto left = std::chrono::ceil<std::chrono::microseconds>(limit - Clock::now());
        return static_cast<uint64_t>(std::max<std::chrono::microseconds::rep>(left.count(), 1));
    }

    const BusLibrary& Library_;
    sd_bus* Bus_ = nullptr;
};

UniqueFd AskToStayAwake(const std::string& why) {
    static const BusLibrary library;
    if (!library.Complete) {
        return {};
    }
    const auto limit = Clock::now() + longestWait;
    SystemBus bus(library);
    return bus.Connect(limit) ? bus.Inhibit(why, limit) : UniqueFd();
}

class LogindInhibitor final : public SleepInhibitor {
public:
    explicit LogindInhibitor(UniqueFd fd) : Fd_(std::move(fd)) {}

private:
    UniqueFd Fd_;
};

}  // namespace

std::unique_ptr<SleepInhibitor> InhibitSleep(const std::string& why) {
    return std::make_unique<LogindInhibitor>(AskToStayAwake(why));
}

}  // namespace burnwick
