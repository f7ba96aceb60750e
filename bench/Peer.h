#pragma once

#include <filesystem>
#include <string>

#include "bench/ChildProcess.h"
#include "platform/files/linux/UniqueFd.h"

namespace bench {

// A pseudo-terminal without anybody at its far end. Bytes sent to it are taken as long as few come.
class SilentLine {
public:
    SilentLine();

    const std::string& Device() const { return Device_; }
    int HostEnd() const { return Host_.Get(); }
    int FarEnd() const { return Far_.Get(); }

private:
    burnwick::UniqueFd Far_;
    std::string Device_;
    burnwick::UniqueFd Host_;  // kept open: the far end of a line that nobody has open reports errors
};

// Settings in this folder that say nothing but that every port is this line.
void LeadAllPortsTo(const SilentLine& line, const std::filesystem::path& folder);

// The least that a link can be tried against: a process that acknowledges whatever comes as soon as it is
// whole, and does nothing else, so that what is measured is the host.
class Peer {
public:
    Peer();

    const SilentLine& Line() const { return Line_; }

private:
    SilentLine Line_;
    ChildProcess Process_;
};

}  // namespace bench
