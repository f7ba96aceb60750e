#include "platform/loop/TimerQueue.h"

#include <gmock/gmock.h>

#include <string>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class TimerQueueTest : public testing::Test {
protected:
    std::unique_ptr<Timer> Started(std::chrono::milliseconds interval, std::function<void()> tick) {
        auto timer = Queue_.NewTimer(interval, std::move(tick));
        timer->SetEnabled(true);
        return timer;
    }

    std::chrono::microseconds Time_ = 5s;
    TimerQueue Queue_{[this] { return Time_; }};
    int Ticks_ = 0;
};

TEST_F(TimerQueueTest, ANewTimerIsSwitchedOff) {
    const auto timer = Queue_.NewTimer(100ms, [this] { ++Ticks_; });
    Time_ += 1s;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
    EXPECT_EQ(Queue_.NextDue(), std::nullopt);
}

TEST_F(TimerQueueTest, ATimerTicksWhenItsIntervalIsOverAndNotBefore) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    Time_ += 99ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
    Time_ += 1ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 1);
}

TEST_F(TimerQueueTest, TicksThatFellDueTogetherComeOneByOne) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    Time_ += 350ms;
    for (const int expected : {1, 2, 3, 3}) {
        Queue_.TickDue();
        EXPECT_EQ(Ticks_, expected);
    }
    Time_ += 50ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 4);
}

TEST_F(TimerQueueTest, TheNextDueTimeIsThatOfTheFirstTimer) {
    const auto slow = Started(1s, [] {});
    const auto fast = Started(100ms, [] {});
    EXPECT_EQ(Queue_.NextDue(), Time_ + 100ms);
}

TEST_F(TimerQueueTest, SwitchingOffDropsTicksNotYetHandled) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    Time_ += 500ms;
    timer->SetEnabled(false);
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
}

TEST_F(TimerQueueTest, SwitchingOnStartsAWholeIntervalAnew) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    Time_ += 90ms;
    timer->SetEnabled(true);
    Time_ += 90ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
}

TEST_F(TimerQueueTest, MissedTicksCanBeSkippedWithoutLosingTheRhythm) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    Time_ += 1050ms;
    timer->SkipMissedTicks();
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
    Time_ += 50ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 1);
}

TEST_F(TimerQueueTest, SkippingWhenNothingWasMissedChangesNothing) {
    const auto timer = Started(100ms, [this] { ++Ticks_; });
    const auto off = Queue_.NewTimer(100ms, [this] { ++Ticks_; });
    Time_ += 99ms;
    timer->SkipMissedTicks();
    off->SkipMissedTicks();
    Time_ += 1ms;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 1);
}

TEST_F(TimerQueueTest, TimersTickInTheOrderOfTheirDueTimes) {
    std::vector<std::string> order;
    const auto last = Started(300ms, [&] { order.emplace_back("last"); });
    const auto first = Started(100ms, [&] { order.emplace_back("first"); });
    const auto middle = Started(200ms, [&] { order.emplace_back("middle"); });
    Time_ += 1s;
    Queue_.TickDue();
    EXPECT_THAT(order, ElementsAre("first", "middle", "last"));
}

TEST_F(TimerQueueTest, ATimerMayEndInItsOwnTick) {
    auto guard = std::make_shared<int>(0);
    std::unique_ptr<Timer> timer;
    timer = Started(100ms, [this, &timer, guard] {
        timer.reset();
        Ticks_ += 1 + *guard;
    });
    Time_ += 500ms;
    Queue_.TickDue();
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 1);
}

TEST_F(TimerQueueTest, ATimerMayEndInTheTickOfAnother) {
    std::unique_ptr<Timer> victim;
    const auto killer = Started(100ms, [&] { victim.reset(); });
    victim = Started(200ms, [this] { ++Ticks_; });
    Time_ += 1s;
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 0);
}

TEST_F(TimerQueueTest, ATickMaySwitchItsOwnTimerOff) {
    std::unique_ptr<Timer> timer;
    timer = Started(100ms, [&] {
        ++Ticks_;
        timer->SetEnabled(false);
    });
    Time_ += 500ms;
    Queue_.TickDue();
    Queue_.TickDue();
    EXPECT_EQ(Ticks_, 1);
}

TEST_F(TimerQueueTest, ATickThatRunsTheLoopDoesNotMakeAnotherTimerTickTwice) {
    int others = 0;
    bool inside = false;
    const auto outer = Started(100ms, [&] {
        if (!inside) {
            inside = true;
            Queue_.TickDue();
        }
    });
    const auto other = Started(150ms, [&] { ++others; });
    Time_ += 1s;
    Queue_.TickDue();
    EXPECT_EQ(others, 1);
}

}  // namespace
}  // namespace burnwick
