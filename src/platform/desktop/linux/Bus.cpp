#include "platform/desktop/linux/Bus.h"

#include <dlfcn.h>

#include <algorithm>

namespace burnwick {

template <typename Function>
bool BusLibrary::Find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(dlsym(Library_, name));
    return function != nullptr;
}

BusLibrary::BusLibrary() : Library_(dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL)) {
    Complete_ = Library_ != nullptr && Find(OpenSystem, "sd_bus_open_system")
                && Find(OpenUser, "sd_bus_open_user") && Find(IsReady, "sd_bus_is_ready")
                && Find(Process, "sd_bus_process") && Find(Wait, "sd_bus_wait")
                && Find(SetTimeout, "sd_bus_set_method_call_timeout") && Find(Call, "sd_bus_call_method")
                && Find(NewCall, "sd_bus_message_new_method_call") && Find(Append, "sd_bus_message_append")
                && Find(SetExpectReply, "sd_bus_message_set_expect_reply") && Find(Send, "sd_bus_send")
                && Find(Read, "sd_bus_message_read") && Find(UnrefMessage, "sd_bus_message_unref")
                && Find(Close, "sd_bus_close") && Find(Unref, "sd_bus_unref");
}

const BusLibrary* BusLibrary::Loaded() {
    static const BusLibrary library;
    return library.Complete_ ? &library : nullptr;
}

std::unique_ptr<Bus> Bus::Connect(BusKind kind, Clock::time_point limit) {
    const auto* const library = BusLibrary::Loaded();
    if (library == nullptr) {
        return nullptr;
    }
    std::unique_ptr<Bus> bus(new Bus(*library, kind));
    return bus->Greeted(limit) ? std::move(bus) : nullptr;
}

Bus::Bus(const BusLibrary& library, BusKind kind) : Library_(library) {
    const auto open = kind == BusKind::System ? Library_.OpenSystem : Library_.OpenUser;
    if (open(&Bus_) < 0) {
        Bus_ = nullptr;
    }
}

Bus::~Bus() {
    Library_.Close(Bus_);
    Library_.Unref(Bus_);
}

// A call would wait much longer than we do for a bus that does not greet back: wait for that here.
bool Bus::Greeted(Clock::time_point limit) {
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

bool Bus::Alive() {
    int handled = 0;
    do {
        handled = Library_.Process(Bus_, nullptr);
    } while (handled > 0);
    return handled == 0;
}

uint64_t MicrosecondsTo(Bus::Clock::time_point limit) {
    const auto left = std::chrono::ceil<std::chrono::microseconds>(limit - Bus::Clock::now());
    return static_cast<uint64_t>(std::max<std::chrono::microseconds::rep>(left.count(), 1));
}

}  // namespace burnwick
