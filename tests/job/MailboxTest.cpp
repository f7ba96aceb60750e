#include "job/Mailbox.h"

#include <gmock/gmock.h>

#include <thread>

#include "platform/loop/MessageLoop.h"

namespace burnwick::test {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Mailbox, GivesTheValuesInTheirOrderAndOnce) {
    Mailbox<int> box;
    box.Post(1);
    box.Post(2);
    box.Post(3);
    EXPECT_THAT(box.TakeAll(), ElementsAre(1, 2, 3));
    EXPECT_THAT(box.TakeAll(), IsEmpty());
}

TEST(Mailbox, LetsANewerValueSupersedeTheOneBeforeIt) {
    Mailbox<int> box([](const int& older, const int& newer) { return older >= 10 && newer >= 10; });
    for (const int value : {1, 10, 11, 12, 2, 13, 14}) {
        box.Post(value);
    }
    EXPECT_THAT(box.TakeAll(), ElementsAre(1, 12, 2, 14));
}

TEST(Mailbox, EndsTheSleepOfTheLoopThatWatchesIt) {
    Mailbox<int> box;
    const auto loop = NewSystemLoop();
    int taken = 0;
    const auto watch = loop->WatchInput(box.Handle(), [&] { taken = box.TakeAll().front(); });
    std::thread other([&box] { box.Post(7); });
    while (taken == 0) {
        loop->Yield(1h);
    }
    other.join();
    EXPECT_EQ(taken, 7);
}

TEST(Mailbox, IsNotReadyAnyMoreOnceItWasEmptied) {
    Mailbox<int> box;
    const auto loop = NewSystemLoop();
    int calls = 0;
    const auto watch = loop->WatchInput(box.Handle(), [&] { ++calls; });
    box.Post(1);
    loop->Yield(0ms);
    EXPECT_EQ(calls, 1);
    box.TakeAll();
    loop->Yield(0ms);
    EXPECT_EQ(calls, 1);
}

}  // namespace burnwick::test
