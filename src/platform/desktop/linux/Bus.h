#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <memory>

namespace burnwick {

// The calls of libsystemd that are needed, found when they are: a program that needs none starts without the
// library, and one on a system without it runs all the same.
class BusLibrary {
public:
    // Nothing when the library is missing, or one of the calls.
    static const BusLibrary* Loaded();

    decltype(&sd_bus_open_system) OpenSystem = nullptr;
    decltype(&sd_bus_open_user) OpenUser = nullptr;
    decltype(&sd_bus_is_ready) IsReady = nullptr;
    decltype(&sd_bus_process) Process = nullptr;
    decltype(&sd_bus_wait) Wait = nullptr;
    decltype(&sd_bus_set_method_call_timeout) SetTimeout = nullptr;
    decltype(&sd_bus_call_method) Call = nullptr;
    decltype(&sd_bus_message_new_method_call) NewCall = nullptr;
    decltype(&sd_bus_message_append) Append = nullptr;
    decltype(&sd_bus_message_set_expect_reply) SetExpectReply = nullptr;
    decltype(&sd_bus_send) Send = nullptr;
    decltype(&sd_bus_message_read) Read = nullptr;
    decltype(&sd_bus_message_unref) UnrefMessage = nullptr;
    decltype(&sd_bus_close) Close = nullptr;
    decltype(&sd_bus_unref) Unref = nullptr;

private:
    BusLibrary();

    template <typename Function>
    bool Find(Function& function, const char* name);

    void* Library_;  // never unloaded: the library is not made for that
    bool Complete_ = false;
};

enum class BusKind { System, Session };

// A connection to a bus, closed with its object.
class Bus {
public:
    using Clock = std::chrono::steady_clock;

    // Nothing when there is no such bus, or when it has not greeted back by then.
    static std::unique_ptr<Bus> Connect(BusKind kind, Clock::time_point limit);
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus();

    // Drops what has arrived. False when the bus has gone.
    bool Alive();

    const BusLibrary& Library() const { return Library_; }
    sd_bus* Handle() const { return Bus_; }

private:
    Bus(const BusLibrary& library, BusKind kind);

    bool Greeted(Clock::time_point limit);

    const BusLibrary& Library_;
    sd_bus* Bus_ = nullptr;
};

// A limit as the library takes it: at least one, for zero stands for its own, long limit.
uint64_t MicrosecondsTo(Bus::Clock::time_point limit);

}  // namespace burnwick
