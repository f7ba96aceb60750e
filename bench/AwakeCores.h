#pragma once

#include <memory>
#include <vector>

#include "bench/ChildProcess.h"

namespace bench {

// Keeps every core from falling asleep, with work that gives way to any other at once. Waking a sleeping core
// takes longer than a block's share of what is measured, and is the machine's doing.
class AwakeCores {
public:
    AwakeCores();

private:
    std::vector<std::unique_ptr<ChildProcess>> Idlers_;
};

}  // namespace bench
