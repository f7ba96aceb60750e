#pragma once

#include <chrono>
#include <ctime>

#include "platform/loop/MessageLoop.h"

namespace burnwick::test {

inline std::chrono::nanoseconds ProcessorTime() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

// The whole process stands still.
inline void Stall(std::chrono::milliseconds time) {
    const timespec stall{0, static_cast<long>(std::chrono::nanoseconds(time).count())};
    nanosleep(&stall, nullptr);
}

// Yields until so much time has passed, and tells how often.
inline int YieldFor(MessageLoop& loop, std::chrono::milliseconds time) {
    int yields = 0;
    const auto end = loop.MillisecondClock() + time;
    while (loop.MillisecondClock() < end) {
        loop.Yield(end - loop.MillisecondClock());
        ++yields;
    }
    return yields;
}

}  // namespace burnwick::test
