#include "platform/files/ProgramFolder.h"

#include <gtest/gtest.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "WideVariable.h"
#include "platform/files/Utf8Path.h"

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;

class ProgramFolderTest : public testing::Test {
protected:
    ForeignFolder Folder_;
    WideVariable NoHome_{L"BURNWICK_HOME", std::nullopt};
};

TEST_F(ProgramFolderTest, IsTheOneThatTheEnvironmentNamesMadeWhenMissing) {
    const fs::path station = Folder_.Path() / "station" / u8"\u0447\u0435\u0442\u044B\u0440\u0435";
    const WideVariable home(L"BURNWICK_HOME", station.native());
    EXPECT_EQ(ProgramFolder(), station);
    EXPECT_TRUE(fs::is_directory(station));
}

TEST_F(ProgramFolderTest, HasNoTrailingSeparator) {
    for (const auto* const ending : {L"\\", L"/", L"\\\\//"}) {
        const WideVariable home(L"BURNWICK_HOME", Folder_.Path().native() + ending);
        EXPECT_EQ(ProgramFolder().native(), Folder_.Path().native());
    }
}

TEST_F(ProgramFolderTest, KeepsTheSeparatorOfADrive) {
    const WideVariable home(L"BURNWICK_HOME", L"C:\\");
    EXPECT_EQ(ProgramFolder().native(), L"C:\\");
}

TEST_F(ProgramFolderTest, HasTheSystemsOwnSeparators) {
    const WideVariable home(L"BURNWICK_HOME", Folder_.Path().generic_wstring());
    EXPECT_EQ(ProgramFolder().native(), Folder_.Path().native());
}

TEST_F(ProgramFolderTest, IsTheExecutablesOwnWhenThatCanBeWritten) {
    EXPECT_EQ(ProgramFolder(), ChildProgram().parent_path());
}

TEST_F(ProgramFolderTest, IsFoundInAFolderOfAnyScript) {
    const auto program = Folder_.Path() / u8"\u043F\u0440\u043E\u0433.exe";
    fs::copy_file(ChildProgram(), program);
    EXPECT_EQ(Child(Quoted(program) + L" folder").Line(), Utf8Text(Folder_.Path()));
    EXPECT_EQ(Folder_.FilesThere(), 1) << "nothing is left of the look whether it can be written";
}

TEST_F(ProgramFolderTest, IsTheFirstOfThoseThatAShippedFileMayBeIn) {
    const WideVariable home(L"BURNWICK_HOME", Folder_.Path().native());
    EXPECT_EQ(ShippedFolders(), (std::vector<fs::path>{Folder_.Path(), ChildProgram().parent_path()}));
}

// A program on a drive that cannot be written; a test's surroundings put one there.
TEST_F(ProgramFolderTest, IsTheUsersDataFolderWhereTheProgramsOwnCannotBeWritten) {
    const auto installed = PathFromEnvironment(L"BURNWICK_READ_ONLY_FOLDER");
    if (installed.empty()) {
        GTEST_SKIP() << "BURNWICK_READ_ONLY_FOLDER names no folder with the child program in it";
    }
    const WideVariable data(L"LOCALAPPDATA", Folder_.Path().native());
    EXPECT_EQ(Child(Quoted(installed / "windows_child.exe") + L" folder").Line(),
              Utf8Text(Folder_.Path() / "Burnwick"));
    EXPECT_TRUE(fs::is_directory(Folder_.Path() / "Burnwick"));
}

}  // namespace
}  // namespace burnwick::test
