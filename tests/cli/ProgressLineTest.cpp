#include "cli/ProgressLine.h"

#include <gmock/gmock.h>

#include <sstream>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

}  // namespace

class ProgressLine : public ::testing::Test {
protected:
    // What has been written since it was last asked for.
    std::string Written() {
        std::string text = Err.str();
        Err.str({});
        return text;
    }

    std::ostringstream Err;
};

TEST_F(ProgressLine, ShowsBarPercentRateAndTimeLeft) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 0, 100);
    line.ShowBlock(1000ms, 25, 100);
    line.ShowBlock(2000ms, 50, 100);
    EXPECT_THAT(Written(),
                EndsWith("\r\x1b[K[####################....................]  50 %  6.4 KB/s, 0:02 left"));
}

TEST_F(ProgressLine, ColoursTheBarWhenAsked) {
    cli::ProgressLine line(Err, 80, true);
    line.ShowBlock(0ms, 10, 100);
    EXPECT_THAT(Written(), HasSubstr("[\x1b[32m####\x1b[0m...."));
}

TEST_F(ProgressLine, NeverExceeds100Percent) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 248, 100);
    EXPECT_THAT(Written(), HasSubstr("100 %"));
}

TEST_F(ProgressLine, NeverGoesBackwards) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 60, 100);
    Written();
    line.ShowBlock(1000ms, 40, 100);
    EXPECT_THAT(Written(), HasSubstr("60 %"));
}

TEST_F(ProgressLine, IsNotRedrawnForEveryBlock) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 1, 100);
    Written();
    line.ShowBlock(20ms, 2, 100);
    EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ProgressLine, IsRedrawnForTheLastBlock) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 99, 100);
    Written();
    line.ShowBlock(20ms, 100, 100);
    EXPECT_THAT(Written(), HasSubstr("100 %"));
}

TEST_F(ProgressLine, ClearsItself) {
    {
        cli::ProgressLine line(Err, 80, false);
        line.ShowText("Waiting");
    }
    EXPECT_THAT(Written(), EndsWith("\r\x1b[K"));
}

TEST_F(ProgressLine, WritesNothingToClearWhatIsNotThere) {
    { const cli::ProgressLine line(Err, 80, false); }
    EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ProgressLine, FitsIntoANarrowTerminal) {
    for (const int columns : {1, 2, 10, 20, 40, 41}) {
        cli::ProgressLine line(Err, columns, false);
        line.ShowBlock(0ms, 50, 100);
        line.ShowBlock(2000ms, 60, 100);
        line.ShowText("Waiting for the unit: 60 seconds left (Ctrl+C cancels)");
        line.Clear();
        std::istringstream parts(Written());
        for (std::string part; std::getline(parts, part, '\r');) {
            if (part.starts_with("\x1b[K")) {
                EXPECT_LT(part.size() - 3, static_cast<std::size_t>(columns)) << part;
            }
        }
    }
}

TEST_F(ProgressLine, IsALineEveryTenPercentWithoutATerminal) {
    cli::ProgressLine line(Err, 0, false);
    for (int block = 0; block <= 30; ++block) {
        line.ShowBlock(block * 1s, block, 30);
    }
    EXPECT_EQ(Written(), "10 %\n20 %\n30 %\n40 %\n50 %\n60 %\n70 %\n80 %\n90 %\n100 %\n");
}

TEST_F(ProgressLine, LeavesNoLineOutWhereBlocksAreSkipped) {
    cli::ProgressLine line(Err, 0, false);
    line.ShowBlock(0ms, 0, 1000);
    line.ShowBlock(1s, 250, 1000);
    line.ShowBlock(2s, 1000, 1000);
    EXPECT_EQ(Written(), "10 %\n20 %\n30 %\n40 %\n50 %\n60 %\n70 %\n80 %\n90 %\n100 %\n");
}

TEST_F(ProgressLine, ShowsNoTextWithoutATerminal) {
    cli::ProgressLine line(Err, 0, false);
    line.ShowText("Waiting");
    EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ProgressLine, OfNoBlocksShowsNothing) {
    cli::ProgressLine line(Err, 80, false);
    line.ShowBlock(0ms, 0, 0);
    EXPECT_THAT(Written(), Not(HasSubstr("%")));
}

}  // namespace burnwick::test
