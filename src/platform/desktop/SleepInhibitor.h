#pragma once

#include <memory>
#include <string>

namespace burnwick {

// The computer does not go to sleep while this lives. A system that cannot be asked is no error.
class SleepInhibitor {
public:
    virtual ~SleepInhibitor() = default;
};

// `why` is shown to whoever asks a system that keeps reasons what keeps it awake. Never null; waits for the
// system half a second at most.
std::unique_ptr<SleepInhibitor> InhibitSleep(const std::string& why);

}  // namespace burnwick
