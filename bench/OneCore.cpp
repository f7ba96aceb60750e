#include "bench/OneCore.h"

#include <algorithm>

namespace bench {

OneCore::OneCore() {
    sched_getaffinity(0, sizeof(Before_), &Before_);
    cpu_set_t one{};
    CPU_ZERO(&one);
    CPU_SET(static_cast<unsigned>(std::max(0, sched_getcpu())), &one);
    sched_setaffinity(0, sizeof(one), &one);
}

OneCore::~OneCore() {
    sched_setaffinity(0, sizeof(Before_), &Before_);
}

}  // namespace bench
