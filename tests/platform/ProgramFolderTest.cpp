#include "platform/files/ProgramFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <vector>

#include "EnvironmentVariable.h"
#include "platform/files/linux/UniqueFd.h"
#include "support/TempFolder.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::EnvironmentVariable;

class ProgramFolderTest : public testing::Test {
protected:
    test::TempFolder Folder_;
    EnvironmentVariable NoHome_{"BURNWICK_HOME", std::nullopt};
};

TEST_F(ProgramFolderTest, IsTheOneThatTheEnvironmentNamesMadeWhenMissing) {
    const EnvironmentVariable home("BURNWICK_HOME", Folder_.Path() / "station" / "one");
    EXPECT_EQ(ProgramFolder(), Folder_.Path() / "station" / "one");
    EXPECT_TRUE(fs::is_directory(Folder_.Path() / "station" / "one"));
}

TEST_F(ProgramFolderTest, HasNoTrailingSeparator) {
    const EnvironmentVariable home("BURNWICK_HOME", Folder_.Path().string() + "//");
    EXPECT_EQ(ProgramFolder(), Folder_.Path());
}

TEST_F(ProgramFolderTest, IsTheExecutablesOwnWhenThatCanBeWritten) {
    const EnvironmentVariable home("BURNWICK_HOME", "");
    EXPECT_EQ(ProgramFolder(), fs::read_symlink("/proc/self/exe").parent_path());
}

TEST_F(ProgramFolderTest, IsTheFirstOfThoseThatAShippedFileMayBeIn) {
    const EnvironmentVariable home("BURNWICK_HOME", Folder_.Path());
    const fs::path own = fs::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(ShippedFolders(),
              (std::vector<fs::path>{Folder_.Path(), own, own.parent_path() / "share/burnwick"}));
}

// A program installed where its user may not write.
class SystemWideInstallTest : public ProgramFolderTest {
protected:
    SystemWideInstallTest() {
        fs::create_directory(Installed_);
        fs::copy_file(PROGRAM_FOLDER, Installed_ / "program");
        EXPECT_EQ(chmod(Installed_.c_str(), 0555), 0);
        EXPECT_EQ(chmod(Folder_.Path().c_str(), 0777), 0);
    }
    void TearDown() override { chmod(Installed_.c_str(), 0755); }

    // As the installed program finds it; root, who may write anywhere, runs it as another user.
    fs::path InstalledProgramsFolder() const {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const UniqueFd readEnd(ends[0]);
        UniqueFd writeEnd(ends[1]);
        const auto program = Installed_ / "program";
        const pid_t child = fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            dup2(writeEnd.Get(), STDOUT_FILENO);
            if (geteuid() != 0 || setuid(nobody) == 0) {
                execl(program.c_str(), program.c_str(), nullptr);
            }
            _exit(127);
        }
        writeEnd.Reset();
        std::string told;
        for (char c = 0; read(readEnd.Get(), &c, 1) == 1 && c != '\n';) {
            told += c;
        }
        waitpid(child, nullptr, 0);
        return told;
    }

    fs::path Installed_ = Folder_.Path() / "installed";
};

TEST_F(SystemWideInstallTest, UsesItAlsoWhereItsUserMayWrite) {
    fs::permissions(Installed_, fs::perms::all);
    fs::create_directories(Folder_.Path() / "share/doc/burnwick");
    const EnvironmentVariable data("XDG_DATA_HOME", Folder_.Path() / "data");
    EXPECT_EQ(InstalledProgramsFolder(), Folder_.Path() / "data" / "burnwick");
}

TEST_F(SystemWideInstallTest, UsesTheUsersDataFolder) {
    const EnvironmentVariable data("XDG_DATA_HOME", Folder_.Path() / "data");
    EXPECT_EQ(InstalledProgramsFolder(), Folder_.Path() / "data" / "burnwick");
    EXPECT_TRUE(fs::is_directory(Folder_.Path() / "data" / "burnwick"));
}

TEST_F(SystemWideInstallTest, UsesTheUsersHomeWhenNoDataFolderIsNamed) {
    const EnvironmentVariable data("XDG_DATA_HOME", "not/absolute");
    const EnvironmentVariable home("HOME", Folder_.Path());
    EXPECT_EQ(InstalledProgramsFolder(), Folder_.Path() / ".local/share/burnwick");
}

}  // namespace
}  // namespace burnwick
