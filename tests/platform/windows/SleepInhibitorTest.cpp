#include "platform/SleepInhibitor.h"

#include <gtest/gtest.h>

#include "platform/windows/UniqueHandle.h"

namespace burnwick::test {
namespace {

// Where the system takes requests, only an administrator may look at them.
class SleepInhibitorTest : public testing::Test {
protected:
    void SetUp() override {
        REASON_CONTEXT none{};
        none.Flags = POWER_REQUEST_CONTEXT_SIMPLE_STRING;
        std::wstring reason = L"test";
        none.Reason.SimpleReasonString = reason.data();
        if (UniqueHandle(PowerCreateRequest(&none))) {
            EXPECT_NE(InhibitSleep("Flash programming"), nullptr);
            GTEST_SKIP() << "powercfg /requests shows it";
        }
    }

    static bool Inhibited() {
        constexpr EXECUTION_STATE awake = ES_CONTINUOUS | ES_SYSTEM_REQUIRED;
        return (SetThreadExecutionState(0) & awake) == awake;
    }
};

TEST_F(SleepInhibitorTest, HoldsUntilItsEnd) {
    auto inhibitor = InhibitSleep("Writing \xC3\xBC.bin");
    EXPECT_TRUE(Inhibited());
    inhibitor.reset();
    EXPECT_FALSE(Inhibited());
}

TEST_F(SleepInhibitorTest, HoldsWhileOneOfSeveralLives) {
    auto first = InhibitSleep("one");
    const auto second = InhibitSleep("two");
    first.reset();
    EXPECT_TRUE(Inhibited());
}

}  // namespace
}  // namespace burnwick::test
