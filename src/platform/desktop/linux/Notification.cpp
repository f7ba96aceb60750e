#include "platform/desktop/Notification.h"

#include <chrono>
#include <string_view>

#include "platform/desktop/linux/Bus.h"

namespace burnwick {

namespace {

constexpr auto longestWait = std::chrono::milliseconds(200);

// A message's text may have markup in it; its title has none.
std::string AsMarkup(std::string_view text) {
    std::string markup;
    for (const char c : text) {
        switch (c) {
            case '&':
                markup += "&amp;";
                break;
            case '<':
                markup += "&lt;";
                break;
            case '>':
                markup += "&gt;";
                break;
            default:
                markup += c;
        }
    }
    return markup;
}

// Nobody waits for the number of the message, which is all that would be answered.
void Send(const Bus& bus, const std::string& title, const std::string& markup) {
    constexpr uint32_t replacesNone = 0;
    constexpr int noActions = 0;
    constexpr int noHints = 0;
    constexpr int32_t asLongAsTheDesktopLikes = -1;
    const auto& library = bus.Library();
    sd_bus_message* call = nullptr;
    if (library.NewCall(bus.Handle(), &call, "org.freedesktop.Notifications",
                        "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Notify")
            >= 0
        && library.SetExpectReply(call, 0) >= 0
        && library.Append(call, "susssasa{sv}i", "Burnwick", replacesNone, "burnwick", title.c_str(),
                          markup.c_str(), noActions, noHints, asLongAsTheDesktopLikes)
               >= 0) {
        library.Send(bus.Handle(), call, nullptr);
    }
    library.UnrefMessage(call);
}

}  // namespace

void Notify(const std::string& title, const std::string& text) {
    // Kept: a desktop takes a message away with the connection that it came by, and one that has yet to start
    // what shows messages would lose it.
    static std::unique_ptr<Bus> bus;
    if (!bus || !bus->Alive()) {
        bus = Bus::Connect(BusKind::Session, Bus::Clock::now() + longestWait);
    }
    if (bus) {
        Send(*bus, title, AsMarkup(text));
    }
}

}  // namespace burnwick
