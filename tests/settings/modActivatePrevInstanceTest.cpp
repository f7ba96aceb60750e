#include "settings/modActivatePrevInstance.h"

#include <gtest/gtest.h>

#include "platform/window/SingleInstance.h"

namespace burnwick::test {
namespace {

using modActivatePrevInstance::ActivatePrevInstance;

class FakeCopies final : public SingleInstance {
public:
    bool AnotherRuns() override { return Runs; }
    bool BringForward() override {
        ++Asked;
        return Comes;
    }
    void Claim(std::function<void()>) override { ++Claimed; }

    bool Runs = true;
    bool Comes = true;
    int Asked = 0;
    int Claimed = 0;
};

class ActivatePrevInstanceTest : public testing::Test {
protected:
    FakeCopies Copies_;
};

TEST_F(ActivatePrevInstanceTest, EndsThisCopyWhenTheOtherCameForward) {
    EXPECT_TRUE(ActivatePrevInstance(Copies_, "No"));
    EXPECT_EQ(Copies_.Asked, 1);
}

TEST_F(ActivatePrevInstanceTest, LetsTheOnlyCopyRun) {
    Copies_.Runs = false;
    EXPECT_FALSE(ActivatePrevInstance(Copies_, "No"));
    EXPECT_EQ(Copies_.Asked, 0);
}

TEST_F(ActivatePrevInstanceTest, LetsASecondCopyRunWhileOneIsProgramming) {
    EXPECT_FALSE(ActivatePrevInstance(Copies_, "Yes"));
    EXPECT_EQ(Copies_.Asked, 0);
}

TEST_F(ActivatePrevInstanceTest, TakesNothingButAnExactYesForProgramming) {
    for (const char* const status : {"", "yes", "YES", "Yes ", "1"}) {
        EXPECT_TRUE(ActivatePrevInstance(Copies_, status)) << status;
    }
}

TEST_F(ActivatePrevInstanceTest, LetsThisCopyRunWhenTheOtherDoesNotComeForward) {
    Copies_.Comes = false;
    EXPECT_FALSE(ActivatePrevInstance(Copies_, "No"));
    EXPECT_EQ(Copies_.Asked, 1);
}

TEST_F(ActivatePrevInstanceTest, ClaimsNoPlace) {
    ActivatePrevInstance(Copies_, "Yes");
    ActivatePrevInstance(Copies_, "No");
    EXPECT_EQ(Copies_.Claimed, 0);
}

}  // namespace
}  // namespace burnwick::test
