#include "job/TransferRate.h"

#include <gtest/gtest.h>

namespace burnwick::test {

using namespace std::chrono_literals;

TEST(TransferRate, IsSilentUntilASecondHasBeenSeen) {
    TransferRate rate;
    EXPECT_EQ(rate.Text(), "");
    rate.Add(0ms, 0, 1000);
    rate.Add(900ms, 40, 1000);
    EXPECT_EQ(rate.Text(), "");
}

TEST(TransferRate, IsKilobytesPerSecondAndTimeLeft) {
    TransferRate rate;
    rate.Add(0ms, 0, 2000);
    rate.Add(1000ms, 43, 2000);
    EXPECT_EQ(rate.Text(), "11.0 KB/s, 0:46 left");
}

TEST(TransferRate, CountsMinutes) {
    TransferRate rate;
    rate.Add(0ms, 0, 4096);
    rate.Add(1000ms, 20, 4096);
    EXPECT_EQ(rate.Text(), "5.1 KB/s, 3:24 left");
}

TEST(TransferRate, GoesByTheLastSeconds) {
    TransferRate rate;
    int block = 0;
    for (auto now = 0ms; now <= 10s; now += 100ms) {
        rate.Add(now, block, 10'000);
        block += 10;
    }
    // Slower by half from here: after the horizon nothing is left of the faster time.
    for (auto now = 10'100ms; now <= 20s; now += 100ms) {
        rate.Add(now, block, 10'000);
        block += 5;
    }
    EXPECT_EQ(rate.Text().substr(0, 9), "12.8 KB/s");
}

TEST(TransferRate, DoesNotJumpAtASinglePause) {
    TransferRate rate;
    int block = 0;
    for (auto now = 0ms; now <= 10s; now += 100ms) {
        rate.Add(now, block, 10'000);
        block += 10;
    }
    rate.Add(10'500ms, block + 1, 10'000);
    EXPECT_EQ(rate.Text().substr(0, 2), "24");
}

TEST(TransferRate, IsSilentWhenNothingMoves) {
    TransferRate rate;
    rate.Add(0ms, 5, 100);
    rate.Add(2000ms, 5, 100);
    EXPECT_EQ(rate.Text(), "");
}

}  // namespace burnwick::test
