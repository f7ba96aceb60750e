#include "log/LogTrouble.h"

namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(LogTrouble, LeavesAFolderInTheLogsPlace) {
    fs::create_directory(Live);
    WriteBoth();
    EXPECT_TRUE(fs::is_directory(Live));
    EXPECT_TRUE(fs::is_empty(Live));
    EXPECT_EQ(Names(), std::set<std::string>{"Burnwick.log"});
}

TEST_F(LogTrouble, DoesNothingInAFolderThatIsNotThere) {
    const auto none = Folder.Path() / "none";
    WriteActivityLog(none, "&All", Failure("/new.bin"), Afternoon());
    LogBaudRateChange(none, false, Afternoon());
    EXPECT_FALSE(fs::exists(none));
}

}  // namespace burnwick::test
