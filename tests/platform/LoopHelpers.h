#pragma once

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <ctime>

#include "platform/MessageLoop.h"
#include "platform/linux/UniqueFd.h"

namespace burnwick::test {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        ReadEnd.Reset(ends[0]);
        WriteEnd.Reset(ends[1]);
    }
    void Put() const { EXPECT_EQ(write(WriteEnd.Get(), "x", 1), 1); }
    void Take() const {
        char taken = 0;
        EXPECT_EQ(read(ReadEnd.Get(), &taken, 1), 1);
    }
    UniqueFd ReadEnd;
    UniqueFd WriteEnd;
};

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
