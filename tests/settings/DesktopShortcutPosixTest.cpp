#include <gmock/gmock.h>

#include "platform/Forked.h"
#include "settings/HostilePaths.h"
#include "settings/UserHome.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class DesktopShortcutTest : public test::UserHome {
protected:
    DesktopShortcutTest() { fs::create_directories(Desktop); }

    void DesktopIs(const std::string& line) const {
        Write(Home / ".config/user-dirs.dirs", "# written by the desktop\n" + line + "\n");
    }

    fs::path Desktop = Home / "Desktop";
    fs::path Launcher = Desktop / "Burnwick.desktop";
};

TEST_F(DesktopShortcutTest, StartsTheProgram) {
    Shell->CreateDesktopShortcut(Program);
    EXPECT_EQ(Output({DESKTOP_FILE_VALIDATE, Launcher}), "");
    EXPECT_THAT(TextOf(Launcher), HasSubstr("\nName=Burnwick\n"));
    EXPECT_THAT(TextOf(Launcher), HasSubstr("\nExec=/opt/burnwick/Burnwick\n"));
}

TEST_F(DesktopShortcutTest, IsValidWhereverTheProgramIs) {
    for (const auto* const folder : test::HostileFolders) {
        Shell->CreateDesktopShortcut(fs::path("/opt") / folder / "Burnwick");
        EXPECT_EQ(Output({DESKTOP_FILE_VALIDATE, Launcher}), "") << folder;
    }
}

TEST_F(DesktopShortcutTest, IsExecutable) {
    Write(Launcher, "old");
    Shell->CreateDesktopShortcut(Program);
    EXPECT_NE(fs::status(Launcher).permissions() & fs::perms::owner_exec, fs::perms::none);
}

TEST_F(DesktopShortcutTest, FollowsAProgramThatWasMoved) {
    Shell->CreateDesktopShortcut(Program);
    Shell->CreateDesktopShortcut("/srv/moved/Burnwick");
    EXPECT_THAT(TextOf(Launcher), HasSubstr("\nExec=/srv/moved/Burnwick\n"));
}

TEST_F(DesktopShortcutTest, IsNotWrittenAgainWhenItIsThere) {
    Shell->CreateDesktopShortcut(Program);
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(Launcher, longAgo);
    Shell->CreateDesktopShortcut(Program);
    EXPECT_EQ(fs::last_write_time(Launcher), longAgo);
}

TEST_F(DesktopShortcutTest, IsAllThatIsDeleted) {
    Write(Desktop / "Notes.txt", "mine");
    Shell->CreateDesktopShortcut(Program);
    Shell->DeleteDesktopShortcut();
    Shell->DeleteDesktopShortcut();
    EXPECT_FALSE(fs::exists(Launcher));
    EXPECT_EQ(TextOf(Desktop / "Notes.txt"), "mine");
}

TEST_F(DesktopShortcutTest, IsNoFolderOfThatName) {
    fs::create_directory(Launcher);
    Shell->DeleteDesktopShortcut();
    Shell->CreateDesktopShortcut(Program);
    EXPECT_TRUE(fs::is_directory(Launcher));
}

TEST_F(DesktopShortcutTest, TakesThePlaceOfALinkAndLeavesWhatThatLedTo) {
    Shell->RegisterFileType(Program);
    fs::create_symlink(Entry, Launcher);
    Shell->CreateDesktopShortcut(Program);
    EXPECT_FALSE(fs::is_symlink(Launcher));
    EXPECT_THAT(TextOf(Entry), HasSubstr("\nName=Flash with Burnwick\n"));
}

TEST_F(DesktopShortcutTest, LiesWhereTheUsersDesktopIs) {
    const auto desktop = Home / R"(Schreib "tisch" $x)";
    fs::create_directory(desktop);
    DesktopIs(R"(XDG_DESKTOP_DIR="$HOME/Schreib \"tisch\" \$x")");
    Shell->CreateDesktopShortcut(Program);
    EXPECT_TRUE(fs::exists(desktop / "Burnwick.desktop"));
    EXPECT_FALSE(fs::exists(Launcher));
    Shell->DeleteDesktopShortcut();
    EXPECT_THAT(fs::directory_iterator(desktop), fs::directory_iterator());
}

TEST_F(DesktopShortcutTest, MayLieOutsideTheHome) {
    fs::create_directory(Folder.Path() / "elsewhere");
    DesktopIs("XDG_DESKTOP_DIR = \"" + (Folder / "elsewhere") + "\"");
    Shell->CreateDesktopShortcut(Program);
    EXPECT_TRUE(fs::exists(Folder.Path() / "elsewhere/Burnwick.desktop"));
}

TEST_F(DesktopShortcutTest, LiesInTheUsualPlaceWhenTheUserNamesNoOther) {
    for (const auto* const line :
         {"#XDG_DESKTOP_DIR=\"$HOME/x\"", "XDG_DESKTOP_DIR=\"relative\"",
          "XDG_DESKTOP_DIR=", "XDG_DESKTOP_DIR=\"", "XDG_DESKTOP_DIR", "XDG_DOWNLOAD_DIR=\"$HOME/x\"",
          "XDG_DESKTOP_DIR=\"$HOMEx\"", "XDG_DESKTOP_DIR=$HOME/x"}) {
        DesktopIs(line);
        Shell->CreateDesktopShortcut(Program);
        EXPECT_TRUE(fs::exists(Launcher)) << line;
        Shell->DeleteDesktopShortcut();
    }
}

TEST_F(DesktopShortcutTest, LiesNowhereWhenTheUserHasNoDesktop) {
    Write(Home / "Burnwick.desktop", "mine");
    for (const auto* const line : {"XDG_DESKTOP_DIR=\"$HOME/\"", "XDG_DESKTOP_DIR=\"$HOME\""}) {
        DesktopIs(line);
        Shell->CreateDesktopShortcut(Program);
        Shell->DeleteDesktopShortcut();
        EXPECT_EQ(TextOf(Home / "Burnwick.desktop"), "mine");
    }
}

TEST_F(DesktopShortcutTest, MakesNoDesktopWhereThereIsNone) {
    fs::remove(Desktop);
    Shell->CreateDesktopShortcut(Program);
    Shell->DeleteDesktopShortcut();
    EXPECT_THAT(Everything(), IsEmpty());
}

TEST_F(DesktopShortcutTest, StaysAwayFromADesktopThatMayNotBeWritten) {
    constexpr auto readOnly =
        fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(Desktop, readOnly);
    EXPECT_TRUE(test::DoneAsAnyUser([this] { Shell->CreateDesktopShortcut(Program); }));
    EXPECT_FALSE(fs::exists(Launcher));
    fs::permissions(Desktop, fs::perms::all);
    Shell->CreateDesktopShortcut(Program);
    fs::permissions(Desktop, readOnly);
    EXPECT_TRUE(test::DoneAsAnyUser([this] { Shell->DeleteDesktopShortcut(); }));
    EXPECT_TRUE(fs::exists(Launcher));
}

}  // namespace
}  // namespace burnwick
