#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace burnwick {

// A process that has a device locked or open.
struct PortHolder {
    pid_t Process;
    std::string Name;
};

// Nothing when no process with the device open can be seen: those of other users cannot.
std::optional<PortHolder> FindPortHolder(const std::string& device);

}  // namespace burnwick
