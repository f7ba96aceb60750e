#pragma once

#include <sched.h>

namespace bench {

// Keeps this process, and those that it starts meanwhile, on one core.
//
// Host and peer take turns, so one core is enough for both. Across cores, what is measured is mostly how long
// the system takes to wake a core that has gone to sleep, which would hide what the link itself costs.
class OneCore {
public:
    OneCore();
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;
    ~OneCore();

private:
    cpu_set_t Before_{};
};

}  // namespace bench
