#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "simulator/FileDescriptor.h"

namespace simulator {

// The unit's end of a pseudo-terminal; the host opens the other end as a serial port.
class PseudoTerminal {
public:
    // Throws std::system_error when the system gives none.
    PseudoTerminal();

    const std::string& HostPath() const { return HostPath_; }
    int Descriptor() const { return Master_.Get(); }

    // The speed that the host has set, in bit/s; 0 for one that has no name.
    unsigned HostBaud() const;

    // What the host has written; empty when nothing waits.
    std::vector<std::byte> Read();

    // Writes as much as the host's buffer takes now, and returns how much that was.
    std::size_t Write(std::span<const std::byte> bytes);

private:
    FileDescriptor Master_;
    std::string HostPath_;
    // Never read. Held open, so that a host that closes its end does not hang up the line; opened once, since
    // a host may claim the terminal for itself.
    FileDescriptor Host_;
};

}  // namespace simulator
