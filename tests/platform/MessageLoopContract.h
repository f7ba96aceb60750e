#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

#include "platform/LoopHelpers.h"
#include "platform/Pipe.h"
#include "platform/loop/MessageLoop.h"

// What every message loop of the system does. A test program instantiates it for its loop.
namespace burnwick::test {

using namespace std::chrono_literals;

// A kind of loop, for which a test is named.
struct LoopKind {
    const char* Name;
    std::unique_ptr<MessageLoop> (*New)();

    friend void PrintTo(const LoopKind& kind, std::ostream* out) { *out << kind.Name; }
};

class MessageLoopContract : public testing::TestWithParam<LoopKind> {
protected:
    const std::unique_ptr<MessageLoop> Loop_ = GetParam().New();
    int Calls_ = 0;
};

TEST_P(MessageLoopContract, AWaitUsesNextToNoProcessor) {
    YieldFor(*Loop_, 20ms);
    const auto before = ProcessorTime();
    EXPECT_LT(YieldFor(*Loop_, 300ms), 5);
    // A system may tell it in ticks of 10 to 16 ms.
    EXPECT_LT(ProcessorTime() - before, 60ms);
}

TEST_P(MessageLoopContract, AYieldOfNoTimeReturnsAtOnce) {
    const auto before = Loop_->MillisecondClock();
    Loop_->Yield(0us);
    Loop_->Yield(-5us);
    EXPECT_LT(Loop_->MillisecondClock() - before, 1s);
}

TEST_P(MessageLoopContract, AYieldOfNoTimeHandlesWhatWaits) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        ++Calls_;
        pipe.Take();
    });
    const auto timer = Loop_->NewTimer(1ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    pipe.Put();
    Stall(3ms);
    Loop_->Yield(0us);
    EXPECT_EQ(Calls_, 2);
}

TEST_P(MessageLoopContract, ASleepMayBeLongerThanAnyClockTells) {
    const auto timer = Loop_->NewTimer(1ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    while (Calls_ == 0) {
        Loop_->Yield(std::chrono::hours(1'000'000));
    }
}

TEST_P(MessageLoopContract, WakesOnInput) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        ++Calls_;
        pipe.Take();
    });
    pipe.Put();
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 1);
    Loop_->Yield(0us);
    EXPECT_EQ(Calls_, 1);
}

TEST_P(MessageLoopContract, TellsOfInputAgainWhenNotAllOfItWasTaken) {
    const Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        ++Calls_;
        pipe.Take();
    });
    pipe.Put();
    pipe.Put();
    Loop_->Yield(60s);
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 2);
}

TEST_P(MessageLoopContract, AnEndedWatchIsNotCalled) {
    const Pipe pipe;
    auto watch = Loop_->WatchInput(pipe.Handle(), [&] { ++Calls_; });
    pipe.Put();
    watch.reset();
    Loop_->Yield(1ms);
    EXPECT_EQ(Calls_, 0);
}

TEST_P(MessageLoopContract, AWatchMayEndInItsOwnCall) {
    const Pipe pipe;
    const auto guard = std::make_shared<int>(1);
    std::unique_ptr<Watch> watch;
    watch = Loop_->WatchInput(pipe.Handle(), [this, &watch, guard] {
        watch.reset();
        Calls_ += *guard;
    });
    pipe.Put();
    Loop_->Yield(60s);
    Loop_->Yield(1ms);
    EXPECT_EQ(Calls_, 1);
}

TEST_P(MessageLoopContract, AWatchMayEndInTheCallOfAnother) {
    const Pipe one;
    const Pipe other;
    std::unique_ptr<Watch> first;
    std::unique_ptr<Watch> second;
    first = Loop_->WatchInput(one.Handle(), [&] {
        second.reset();
        one.Take();
        ++Calls_;
    });
    second = Loop_->WatchInput(other.Handle(), [&] {
        first.reset();
        other.Take();
        ++Calls_;
    });
    one.Put();
    other.Put();
    Loop_->Yield(60s);
    Loop_->Yield(1ms);
    EXPECT_EQ(Calls_, 1);
}

TEST_P(MessageLoopContract, ACallbackMayRunTheLoop) {
    const Pipe one;
    const Pipe other;
    const auto first = Loop_->WatchInput(one.Handle(), [&] {
        one.Take();
        other.Put();
        Loop_->Yield(60s);
    });
    const auto second = Loop_->WatchInput(other.Handle(), [&] {
        other.Take();
        ++Calls_;
    });
    one.Put();
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 1);
}

TEST_P(MessageLoopContract, InputThatWasTakenInsideACallbackIsNotToldAgain) {
    const Pipe one;
    const Pipe other;
    // Taking what is not there would wait for ever.
    const auto takeAndYield = [this](const Pipe& pipe) {
        pipe.Take();
        if (++Calls_ == 1) {
            Loop_->Yield(60s);
        }
    };
    const auto first = Loop_->WatchInput(one.Handle(), [&] { takeAndYield(one); });
    const auto second = Loop_->WatchInput(other.Handle(), [&] { takeAndYield(other); });
    one.Put();
    other.Put();
    Loop_->Yield(60s);
    EXPECT_EQ(Calls_, 2);
}

TEST_P(MessageLoopContract, ATimerEndsTheSleep) {
    const auto timer = Loop_->NewTimer(20ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    const auto before = Loop_->MillisecondClock();
    while (Calls_ == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_GE(Loop_->MillisecondClock() - before, 19ms);
}

TEST_P(MessageLoopContract, ATimerThatIsSwitchedOffDoesNotTick) {
    const auto timer = Loop_->NewTimer(1ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    timer->SetEnabled(false);
    YieldFor(*Loop_, 5ms);
    EXPECT_EQ(Calls_, 0);
}

TEST_P(MessageLoopContract, EveryTickIsSeenByWhoLooksAfterEveryYield) {
    const auto timer = Loop_->NewTimer(2ms, [this] { ++Calls_; });
    timer->SetEnabled(true);
    Stall(15ms);
    int seen = 0;
    while (seen < 20) {
        Loop_->Yield(1s);
        ASSERT_LE(Calls_, seen + 1);
        seen = Calls_;
    }
}

TEST_P(MessageLoopContract, ATickMayRunTheLoopInWhichTheOthersTick) {
    int inside = 0;
    const auto often = Loop_->NewTimer(1ms, [this] { ++Calls_; });
    std::unique_ptr<Timer> once;
    once = Loop_->NewTimer(5ms, [&] {
        once->SetEnabled(false);
        const int before = Calls_;
        while (Calls_ < before + 3) {
            Loop_->Yield(60s);
        }
        ++inside;
    });
    often->SetEnabled(true);
    once->SetEnabled(true);
    while (inside == 0) {
        Loop_->Yield(60s);
    }
    EXPECT_EQ(inside, 1);
}

TEST_P(MessageLoopContract, InputIsHandledBeforeTheTickThatIsDueWithIt) {
    const Pipe pipe;
    int callsAtTick = -1;
    const auto timer = Loop_->NewTimer(1ms, [&] { callsAtTick = Calls_; });
    const auto watch = Loop_->WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        ++Calls_;
    });
    timer->SetEnabled(true);
    Stall(3ms);
    pipe.Put();
    Loop_->Yield(60s);
    EXPECT_EQ(callsAtTick, 1);
}

TEST_P(MessageLoopContract, AHandleThatIsNoneDoesNotSpin) {
    Pipe pipe;
    const auto watch = Loop_->WatchInput(pipe.Handle(), [this] { ++Calls_; });
    pipe.CloseHandle();
    EXPECT_LT(YieldFor(*Loop_, 50ms), 5);
    EXPECT_LE(Calls_, 1);
}

TEST_P(MessageLoopContract, NowIsTheLocalTime) {
    const std::time_t before = std::time(nullptr);
    auto now = Loop_->Now();
    const std::time_t told = std::mktime(&now);
    EXPECT_GE(told, before);
    EXPECT_LE(told, std::time(nullptr));
}

}  // namespace burnwick::test
