#include "job/RecentFiles.h"

#include <gmock/gmock.h>

#include "support/FakeSettings.h"

namespace burnwick::test {

using ::testing::ElementsAre;

class RecentFilesTest : public ::testing::Test {
protected:
    void Add(const std::string& path) { AddRecentFile(path, Settings); }
    RecentFiles Files() const { return ReadRecentFiles(Settings); }
    void Hold(const RecentFiles& files) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            Settings["LastOpenFile/" + std::to_string(i + 1)] = files.at(i);
        }
    }

    FakeSettings Settings;
};

TEST_F(RecentFilesTest, AreNoneWhereNothingIsStored) {
    EXPECT_THAT(Files(), ElementsAre("", "", "", ""));
}

TEST_F(RecentFilesTest, BeginWithTheOneUsedLast) {
    Add("/a.bin");
    Add("/b.bin");
    EXPECT_THAT(Files(), ElementsAre("/b.bin", "/a.bin", "", ""));
}

TEST_F(RecentFilesTest, LoseTheOldestToAFifth) {
    Hold({"/a.bin", "/b.bin", "/c.bin", "/d.bin"});
    Add("/e.bin");
    EXPECT_THAT(Files(), ElementsAre("/e.bin", "/a.bin", "/b.bin", "/c.bin"));
}

TEST_F(RecentFilesTest, MoveTheThirdToTheFrontAndLeaveTheFourth) {
    Hold({"/a.bin", "/b.bin", "/c.bin", "/d.bin"});
    Add("/c.bin");
    EXPECT_THAT(Files(), ElementsAre("/c.bin", "/a.bin", "/b.bin", "/d.bin"));
}

TEST_F(RecentFilesTest, StayAsTheyAreWhenTheFirstIsUsedAgain) {
    Hold({"/a.bin", "/b.bin", "", ""});
    Add("/a.bin");
    EXPECT_THAT(Files(), ElementsAre("/a.bin", "/b.bin", "", ""));
}

TEST_F(RecentFilesTest, KnowAPathInWhateverCaseAndStoreTheNewer) {
    Hold({"/a.bin", "/Images/Unit.bin", "/c.bin", ""});
    Add("/images/UNIT.BIN");
    EXPECT_THAT(Files(), ElementsAre("/images/UNIT.BIN", "/a.bin", "/c.bin", ""));
}

TEST(RecentCaption, BeginsWithAnAccessKey) {
    EXPECT_EQ(RecentCaption(2, "C:\\images\\unit.bin"), "&2 C:\\images\\unit.bin");
}

TEST(RecentCaption, OfAPathWithAnAmpersandShowsIt) {
    EXPECT_EQ(RecentCaption(1, "/a & b/&&.bin"), "&1 /a && b/&&&&.bin");
}

TEST(PathOfCaption, IsThePathThatTheEntryWasMadeFor) {
    for (const char* const path : {"/a.bin", "/a & b/&&.bin", "/&1 .bin", "/a&", ""}) {
        EXPECT_EQ(PathOfCaption(RecentCaption(4, path)), path);
    }
}

namespace {

RunResult Ended(Outcome outcome) {
    RunResult run;
    run.Outcome = outcome;
    return run;
}

}  // namespace

TEST(LeavesRecentFile, IsFalseForAnUploadThatWasCanceledOnly) {
    EXPECT_FALSE(LeavesRecentFile(Ended(Outcome::Canceled), true));
    EXPECT_TRUE(LeavesRecentFile(Ended(Outcome::TransmittingError), true));
    EXPECT_TRUE(LeavesRecentFile(Ended(Outcome::Canceled), false));
    EXPECT_TRUE(LeavesRecentFile(Ended(Outcome::TransmittingError), false));
}

}  // namespace burnwick::test
