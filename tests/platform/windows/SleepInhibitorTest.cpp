#include "platform/desktop/SleepInhibitor.h"

#include <gtest/gtest.h>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {
namespace {

// As the system knows it of this thread.
bool Inhibited() {
    constexpr EXECUTION_STATE awake = ES_CONTINUOUS | ES_SYSTEM_REQUIRED;
    return (SetThreadExecutionState(0) & awake) == awake;
}

TEST(SleepInhibitorTest, HoldsUntilItsEnd) {
    auto inhibitor = InhibitSleep("Writing \xC3\xBC.bin");
    EXPECT_TRUE(Inhibited());
    inhibitor.reset();
    EXPECT_FALSE(Inhibited());
}

TEST(SleepInhibitorTest, HoldsWhileOneOfSeveralLives) {
    auto first = InhibitSleep("one");
    const auto second = InhibitSleep("two");
    first.reset();
    EXPECT_TRUE(Inhibited());
}

}  // namespace
}  // namespace burnwick::test
