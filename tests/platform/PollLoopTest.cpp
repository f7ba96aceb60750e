#include "platform/linux/PollLoop.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/UniqueFd.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;

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

std::chrono::nanoseconds ProcessorTime() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

class PollLoopTest : public testing::Test {
protected:
    // Yields until so much time has passed, and tells how often.
    int YieldFor(std::chrono::milliseconds time) {
        int yields = 0;
        const auto end = Loop_.MillisecondClock() + time;
        while (Loop_.MillisecondClock() < end) {
            Loop_.Yield(end - Loop_.MillisecondClock());
            ++yields;
        }
        return yields;
    }

    PollLoop Loop_;
    int Calls_ = 0;
};

TEST_F(PollLoopTest, AWaitUsesNextToNoProcessor) {
    const auto before = ProcessorTime();
    EXPECT_LT(YieldFor(300ms), 5);
    EXPECT_LT(ProcessorTime() - before, 20ms);
}

TEST_F(PollLoopTest, AYieldOfNoTimeReturnsAtOnce) {
    const auto before = Loop_.MillisecondClock();
    Loop_.Yield(0us);
    Loop_.Yield(-5us);
    EXPECT_LT(Loop_.MillisecondClock() - before, 1s);
}

TEST_F(PollLoopTest, WakesOnInput) {
    const Pipe pipe;
    const auto watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [&] {
        ++Calls_;
        pipe.Take();
    });
    pipe.Put();
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 1);
    Loop_.Yield(0us);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(PollLoopTest, AnEndedWatchIsNotCalled) {
    const Pipe pipe;
    auto watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [&] { ++Calls_; });
    pipe.Put();
    watch.reset();
    Loop_.Yield(1ms);
    EXPECT_EQ(Calls_, 0);
}

TEST_F(PollLoopTest, AWatchMayEndInItsOwnCall) {
    const Pipe pipe;
    const auto guard = std::make_shared<int>(1);
    std::unique_ptr<Watch> watch;
    watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [this, &watch, guard] {
        watch.reset();
        Calls_ += *guard;
    });
    pipe.Put();
    Loop_.Yield(60s);
    Loop_.Yield(1ms);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(PollLoopTest, AWatchMayEndInTheCallOfAnother) {
    const Pipe one;
    const Pipe other;
    std::unique_ptr<Watch> second;
    const auto first = Loop_.WatchInput(one.ReadEnd.Get(), [&] { second.reset(); });
    second = Loop_.WatchInput(other.ReadEnd.Get(), [&] { ++Calls_; });
    one.Put();
    other.Put();
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 0);
}

TEST_F(PollLoopTest, ACallbackMayRunTheLoop) {
    const Pipe one;
    const Pipe other;
    const auto first = Loop_.WatchInput(one.ReadEnd.Get(), [&] {
        one.Take();
        Loop_.Yield(60s);
    });
    const auto second = Loop_.WatchInput(other.ReadEnd.Get(), [&] {
        other.Take();
        ++Calls_;
    });
    one.Put();
    other.Put();
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(PollLoopTest, ATimerEndsTheSleep) {
    const auto timer = Loop_.NewTimer(20ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    const auto before = Loop_.MillisecondClock();
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 1);
    EXPECT_GE(Loop_.MillisecondClock() - before, 19ms);
}

TEST_F(PollLoopTest, EveryTickIsSeenByWhoLooksAfterEveryYield) {
    const auto timer = Loop_.NewTimer(2ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    timespec stall{0, 15'000'000};
    nanosleep(&stall, nullptr);
    int seen = 0;
    while (seen < 20) {
        Loop_.Yield(1s);
        ASSERT_LE(Calls_, seen + 1);
        seen = Calls_;
    }
}

TEST_F(PollLoopTest, InputIsHandledBeforeTheTickThatIsDueWithIt) {
    const Pipe pipe;
    int callsAtTick = -1;
    const auto timer = Loop_.NewTimer(1ms, [&] { callsAtTick = Calls_; });
    const auto watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [&] {
        pipe.Take();
        ++Calls_;
    });
    timer->SetEnabled(true);
    timespec stall{0, 3'000'000};
    nanosleep(&stall, nullptr);
    pipe.Put();
    Loop_.Yield(60s);
    EXPECT_EQ(callsAtTick, 1);
}

TEST_F(PollLoopTest, AHungUpHandleIsCalledOnceAndDoesNotSpin) {
    Pipe pipe;
    const auto watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [this] { ++Calls_; });
    pipe.WriteEnd.Reset();
    EXPECT_LT(YieldFor(50ms), 5);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(PollLoopTest, AHandleThatIsNoneIsCalledOnceAndDoesNotSpin) {
    Pipe pipe;
    const auto watch = Loop_.WatchInput(pipe.ReadEnd.Get(), [this] { ++Calls_; });
    pipe.ReadEnd.Reset();
    EXPECT_LT(YieldFor(50ms), 5);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(PollLoopTest, ASignalDoesNotDisturbTheTimers) {
    struct sigaction before {};
    struct sigaction quiet {};
    quiet.sa_handler = [](int) {};
    sigaction(SIGALRM, &quiet, &before);
    itimerval often{{0, 1000}, {0, 1000}};
    itimerval never{};
    setitimer(ITIMER_REAL, &often, nullptr);
    const auto timer = Loop_.NewTimer(10ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    while (Calls_ < 3) {
        Loop_.Yield(60s);
    }
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_EQ(Calls_, 3);
}

TEST_F(PollLoopTest, NowIsTheLocalTime) {
    const std::time_t before = std::time(nullptr);
    auto now = Loop_.Now();
    const std::time_t told = std::mktime(&now);
    EXPECT_GE(told, before);
    EXPECT_LE(told, std::time(nullptr));
}

}  // namespace
}  // namespace burnwick
