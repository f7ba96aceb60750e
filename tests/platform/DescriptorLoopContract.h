#pragma once

#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/MessageLoopContract.h"
#include "platform/files/linux/UniqueFd.h"

// What is asked of a message loop where it waits for file descriptors, beside what every one does.
namespace burnwick::test {

TEST_P(MessageLoopContract, AHungUpHandleIsCalledOnceAndDoesNotSpin) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const UniqueFd readEnd(ends[0]);
    UniqueFd writeEnd(ends[1]);
    const auto watch = Loop_->WatchInput(readEnd.Get(), [this] { ++Calls_; });
    writeEnd.Reset();
    EXPECT_LT(YieldFor(*Loop_, 50ms), 5);
    EXPECT_EQ(Calls_, 1);
}

TEST_P(MessageLoopContract, ASignalDoesNotDisturbTheTimers) {
    struct sigaction before {};
    struct sigaction quiet {};
    quiet.sa_handler = [](int) {};
    sigaction(SIGALRM, &quiet, &before);
    itimerval often{{0, 1000}, {0, 1000}};
    itimerval never{};
    setitimer(ITIMER_REAL, &often, nullptr);
    const auto timer = Loop_->NewTimer(10ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    while (Calls_ < 3) {
        Loop_->Yield(60s);
    }
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_EQ(Calls_, 3);
}

}  // namespace burnwick::test
