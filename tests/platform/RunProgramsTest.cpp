#include "platform/desktop/RunPrograms.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "support/Elapsed.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;

std::chrono::steady_clock::duration TimeToRun(const std::vector<std::vector<std::string>>& commands,
                                              std::chrono::milliseconds atMost) {
    return test::Elapsed([&] { RunPrograms(commands, atMost); });
}

TEST(RunPrograms, WaitsUntilAllHaveEnded) {
    const test::TempFolder folder;
    RunPrograms({{"sh", "-c", "sleep 0.05; touch \"$0\"", folder / "one $x"}, {"touch", folder / "other"}},
                20s);
    EXPECT_TRUE(std::filesystem::exists(folder / "one $x"));
    EXPECT_TRUE(std::filesystem::exists(folder / "other"));
}

TEST(RunPrograms, EndsThoseThatTakeTooLong) {
    EXPECT_LT(TimeToRun({{"sleep", "60"}, {"sleep", "60"}}, 50ms), test::HangLimit);
}

TEST(RunPrograms, MindsNoneThatIsMissingOrFails) {
    EXPECT_LT(TimeToRun({{"no-such-program-anywhere"}, {"false"}, {"/dev/null"}}, 60s), test::HangLimit);
}

TEST(RunPrograms, LetsNothingBePrinted) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    RunPrograms({{"sh", "-c", "echo out; echo err >&2"}}, 20s);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RunPrograms, StartsThemWithSignalsAsUsual) {
    const test::TempFolder folder;
    auto* const before = std::signal(SIGPIPE, SIG_IGN);
    RunPrograms({{"sh", "-c", "grep SigIgn /proc/self/status >\"$0\"", folder / "ignored"}}, 20s);
    std::signal(SIGPIPE, before);
    std::ifstream file(folder / "ignored");
    std::string name;
    unsigned long ignored = ~0UL;
    file >> name >> std::hex >> ignored;
    EXPECT_EQ(ignored & (1UL << (SIGPIPE - 1)), 0UL);
}

}  // namespace
}  // namespace burnwick
