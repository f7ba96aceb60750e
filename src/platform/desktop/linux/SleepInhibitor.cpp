#include "platform/desktop/SleepInhibitor.h"

#include <fcntl.h>

#include <chrono>
#include <utility>

#include "platform/desktop/linux/Bus.h"
#include "platform/files/linux/UniqueFd.h"

namespace burnwick {

namespace {

// A descriptor of our own, which keeps the computer awake while it is open; none when refused.
UniqueFd Inhibit(const Bus& bus, const std::string& why, Bus::Clock::time_point limit) {
    const auto& library = bus.Library();
    library.SetTimeout(bus.Handle(), MicrosecondsTo(limit));
    sd_bus_message* reply = nullptr;
    const int answered = library.Call(bus.Handle(), "org.freedesktop.login1", "/org/freedesktop/login1",
                                      "org.freedesktop.login1.Manager", "Inhibit", nullptr, &reply, "ssss",
                                      "sleep", "Burnwick", why.c_str(), "block");
    int lent = -1;
    UniqueFd kept;
    if (answered >= 0 && library.Read(reply, "h", &lent) > 0) {
        kept.Reset(fcntl(lent, F_DUPFD_CLOEXEC, 0));
    }
    library.UnrefMessage(reply);
    return kept;
}

UniqueFd AskToStayAwake(const std::string& why) {
    constexpr auto patience = std::chrono::milliseconds(500);
    const auto limit = Bus::Clock::now() + patience;
    const auto bus = Bus::Connect(BusKind::System, limit);
    return bus ? Inhibit(*bus, why, limit) : UniqueFd();
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
