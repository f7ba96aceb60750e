#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "simulator/Unit.h"

namespace simulator {

// The cable between a host and a unit. Paced, each byte takes its ten bit times in either direction; unpaced,
// it takes none.
class Line {
public:
    // The unit must outlive the line.
    Line(Unit& unit, bool paced);

    // The host, whose end is set to `hostBaud`, writes bytes at `now`.
    void FromHost(Time now, unsigned hostBaud, std::span<const std::byte> bytes);

    // When something next happens on the line or in the unit; nothing when all is quiet.
    std::optional<Time> NextEvent() const;

    // Lets everything happen that is due by `now`, and takes the bytes that have reached the host by then.
    // Paced, they come as a receive buffer hands them over: at most 14 at a time, the last ones when the last
    // byte is over.
    std::vector<std::byte> ToHost(Time now, unsigned hostBaud);

private:
    // Finer than Time, so that the rounding of a byte's length does not add up.
    using Instant = std::chrono::nanoseconds;

    struct ByteToUnit {
        Instant Over{};
        unsigned Baud = 0;
        std::byte Value{};
        bool EndsWrite = false;
    };
    struct ByteToHost {
        Instant Over{};
        Instant HandedOver{};
        unsigned Baud = 0;
        std::byte Value{};
        bool Judged = false;
    };

    void Advance(Time now, unsigned hostBaud);
    void TakeFromUnit(Time at, unsigned hostBaud);
    void DeliverToUnit();
    void DeliverToHost(Time now, unsigned hostBaud);

    Unit& Unit_;
    bool Paced_;
    std::deque<ByteToUnit> ToUnit_;
    std::deque<ByteToHost> ToHost_;
    Instant HostFree_{};  // when the host's transmitter has nothing left to send
    Instant UnitFree_{};
    std::vector<std::byte> Arrived_;
    Time ArrivedAt_{};
};

}  // namespace simulator
