#include "platform/loop/windows/WaitLoop.h"

#include <vector>

#include "platform/MessageLoopContract.h"

namespace burnwick::test {
namespace {

INSTANTIATE_TEST_SUITE_P(System, MessageLoopContract,
                         testing::Values(LoopKind{"WaitLoop", []() -> std::unique_ptr<MessageLoop> {
                                                      return std::make_unique<WaitLoop>();
                                                  }}));

class WaitLoopTest : public testing::Test {
protected:
    WaitLoop Loop_;
    int Calls_ = 0;
};

TEST_F(WaitLoopTest, AHandleThatIsNoneIsCalledOnce) {
    Pipe pipe;
    const auto watch = Loop_.WatchInput(pipe.Handle(), [this] { ++Calls_; });
    pipe.CloseHandle();
    YieldFor(Loop_, 5ms);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(WaitLoopTest, ABrokenHandleDoesNotHideTheOthers) {
    Pipe broken;
    const Pipe pipe;
    const auto first = Loop_.WatchInput(broken.Handle(), [] {});
    const auto second = Loop_.WatchInput(pipe.Handle(), [&] {
        pipe.Take();
        ++Calls_;
    });
    broken.CloseHandle();
    pipe.Put();
    while (Calls_ == 0) {
        Loop_.Yield(60s);
    }
}

TEST_F(WaitLoopTest, AnEventThatResetsItselfIsToldOfOnce) {
    const UniqueHandle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const UniqueHandle other(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const auto count = [this] { ++Calls_; };
    const auto first = Loop_.WatchInput(reinterpret_cast<WaitHandle>(event.Get()), count);
    const auto second = Loop_.WatchInput(reinterpret_cast<WaitHandle>(other.Get()), count);
    SetEvent(event.Get());
    SetEvent(other.Get());
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 2);
    Loop_.Yield(1ms);
    EXPECT_EQ(Calls_, 2);
}

TEST_F(WaitLoopTest, ABrokenHandleLosesNoSignalOfAnother) {
    Pipe broken;
    const UniqueHandle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const auto first = Loop_.WatchInput(broken.Handle(), [] {});
    const auto second = Loop_.WatchInput(reinterpret_cast<WaitHandle>(event.Get()), [this] { ++Calls_; });
    broken.CloseHandle();
    SetEvent(event.Get());
    YieldFor(Loop_, 5ms);
    EXPECT_EQ(Calls_, 1);
}

TEST_F(WaitLoopTest, MoreHandlesThanTheSystemCanWaitForDoNoHarm) {
    std::vector<Pipe> pipes(100);
    std::vector<std::unique_ptr<Watch>> watches;
    for (const Pipe& pipe : pipes) {
        watches.push_back(Loop_.WatchInput(pipe.Handle(), [&] {
            pipe.Take();
            ++Calls_;
        }));
    }
    pipes.front().Put();
    Loop_.Yield(60s);
    EXPECT_EQ(Calls_, 1);
    EXPECT_LT(YieldFor(Loop_, 20ms), 5);
}

}  // namespace
}  // namespace burnwick::test
