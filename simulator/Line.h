#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "simulator/Unit.h"

namespace simulator {

// The cable between a host and a unit. Paced, each byte takes its ten bit times in either direction; unpaced, it
// takes none.
class Line {
public:
    // The unit must outlive the line.
    Line(Unit& unit, bool paced);

    // The host, whose end is set to `hostBaud`, writes bytes at `now`.
    void FromHost(Time now, unsigned hostBaud, std::span<const std::byte> bytes);

    // When something next happens on the line or in the unit; nothing when all is quiet.
    std::optional<Time> NextEvent() const;

    // Lets everything happen that is due by `now`, and takes the bytes that have reached the host by then.
    std::vector<std::byte> ToHost(Time now, unsigned hostBaud);

private:
    // to be filled in by the implementation
};

}  // namespace simulator
