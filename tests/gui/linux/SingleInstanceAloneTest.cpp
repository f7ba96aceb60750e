#include <gtest/gtest.h>

#include "gui/RunningCopy.h"
#include "platform/EnvironmentVariable.h"
#include "platform/window/SingleInstance.h"
#include "support/TempFolder.h"

namespace burnwick::test {
namespace {

TEST(SingleInstanceAloneTest, WithoutAFolderToMeetInEachCopyRunsAlone) {
    const TempFolder folder;
    const EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
    const EnvironmentVariable nowhere("TMPDIR", folder / "nowhere");
    const auto copies = CopiesNamed("Burnwick");
    copies->Claim([] {});
    EXPECT_FALSE(copies->AnotherRuns());
    EXPECT_FALSE(copies->BringForward());
}

TEST(SingleInstanceAloneTest, ANameMayBeNoText) {
    const MeetingPlace place;
    const RunningCopy other("\xff");
    EXPECT_TRUE(CopiesNamed("\xff")->BringForward());
}

}  // namespace
}  // namespace burnwick::test
