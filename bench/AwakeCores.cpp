#include "bench/AwakeCores.h"

#include <sched.h>

#include <atomic>
#include <thread>

namespace bench {

namespace {

// Never returns; ends with its process.
int IdleAway() {
    const sched_param none{};
    sched_setscheduler(0, SCHED_IDLE, &none);
    for (std::atomic<unsigned> turns;;) {
        ++turns;
    }
}

}  // namespace

AwakeCores::AwakeCores() {
    for (unsigned core = 0; core < std::thread::hardware_concurrency(); ++core) {
        Idlers_.push_back(std::make_unique<ChildProcess>(IdleAway));
    }
}

}  // namespace bench
