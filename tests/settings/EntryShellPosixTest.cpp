#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "platform/Forked.h"
#include "settings/HostilePaths.h"
#include "settings/UserHome.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr auto Other = "/srv/moved/Burnwick";

class ShellIntegrationTest : public test::UserHome {
protected:
    // A program that leaves what it was called with in `Called`.
    void Install(const fs::path& program) const {
        Write(program, "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" >'" + (Called.string() + ".new") + "'\nmv '"
                           + Called.string() + ".new' '" + Called.string() + "'\n");
        fs::permissions(program, fs::perms::owner_all);
    }

    // What the program was called with when the file manager opened this file.
    std::string Open(const std::string& file) const {
        fs::remove(Called);
        const auto complaint = Output({GIO, "launch", Entry, file});
        for (int i = 0; i < 500 && !fs::exists(Called); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return complaint + TextOf(Called);
    }

    std::string TypeOf(const std::string& name) const {
        const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "GNOME");
        Write(Home / name, std::string_view("\0\1\2\3", 4));
        return Output({XDG_MIME, "query", "filetype", Home / name});
    }

    std::string DefaultProgram() const {
        const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "X-Generic");
        return Output({XDG_MIME, "query", "default", "application/x-burnwick-image"});
    }

    fs::path Called = Folder.Path() / "called";
};

TEST_F(ShellIntegrationTest, DoesNothingUnlessItIsAskedTo) {
    EXPECT_EQ(Shell->AssociatedProgram(), "");
    Shell->UnregisterFileType();
    Shell->DeleteDesktopShortcut();
    EXPECT_THAT(Everything(), IsEmpty());
}

TEST_F(ShellIntegrationTest, KnowsTheProgramThatItRegistered) {
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    EXPECT_EQ(DesktopShell()->AssociatedProgram(), Program);
}

TEST_F(ShellIntegrationTest, RegistersAValidEntry) {
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Output({DESKTOP_FILE_VALIDATE, Entry}), "");
    EXPECT_THAT(TextOf(Entry), HasSubstr("\nName=Flash with Burnwick\n"));
}

TEST_F(ShellIntegrationTest, MakesImagesATypeOfTheirOwn) {
    EXPECT_EQ(TypeOf("before.bin"), "application/octet-stream\n");
    Shell->RegisterFileType(Program);
    EXPECT_EQ(TypeOf("image.bin"), "application/x-burnwick-image\n");
    EXPECT_EQ(TypeOf("IMAGE.BIN"), "application/x-burnwick-image\n");
    EXPECT_EQ(TypeOf("image.dat"), "application/octet-stream\n");
    EXPECT_THAT(TextOf(Package), HasSubstr("<comment>Burnwick File</comment>"));
}

TEST_F(ShellIntegrationTest, IsWhatTheDesktopOpensImagesWith) {
    const auto program = Home / "bin/Burnwick";
    Install(program);
    Shell->RegisterFileType(program);
    EXPECT_EQ(DefaultProgram(), "Burnwick.desktop\n");
    EXPECT_THAT(Output({GIO, "mime", "application/x-burnwick-image"}), HasSubstr("Burnwick.desktop"));
}

TEST_F(ShellIntegrationTest, StartsTheProgramAndNothingElseWhereverItIs) {
    for (const auto* const folder : test::HostileFolders) {
        const auto program = Folder.Path() / folder / "Burnwick";
        Install(program);
        Shell->RegisterFileType(program);
        EXPECT_EQ(Shell->AssociatedProgram(), program);
        EXPECT_EQ(Open("/tmp/image $x 100%.bin"), program.string() + "\n/tmp/image $x 100%.bin\n");
    }
}

TEST_F(ShellIntegrationTest, FollowsAProgramThatWasMoved) {
    Shell->RegisterFileType(Program);
    const auto defaults = TextOf(Defaults);
    Shell->RegisterFileType(Other);
    EXPECT_EQ(Shell->AssociatedProgram(), Other);
    EXPECT_EQ(TextOf(Defaults), defaults);
}

TEST_F(ShellIntegrationTest, IsGoneWhenItIsTakenAway) {
    Shell->RegisterFileType(Program);
    Shell->UnregisterFileType();
    EXPECT_EQ(Shell->AssociatedProgram(), "");
    EXPECT_FALSE(fs::exists(Entry));
    EXPECT_FALSE(fs::exists(Package));
    EXPECT_EQ(DefaultProgram(), "");
    EXPECT_EQ(TypeOf("image.bin"), "application/octet-stream\n");
}

TEST_F(ShellIntegrationTest, LeavesOtherProgramsTheirFiles) {
    const std::string others = "[Default Applications]\ntext/html=firefox.desktop\n# mine\n";
    Write(Defaults, others);
    Write(Entry.parent_path() / "other.desktop", "other");
    Write(Package.parent_path() / "other.xml", "<mime-info/>");
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    Shell->UnregisterFileType();
    EXPECT_EQ(TextOf(Defaults), others);
    EXPECT_EQ(TextOf(Entry.parent_path() / "other.desktop"), "other");
    EXPECT_EQ(TextOf(Package.parent_path() / "other.xml"), "<mime-info/>");
}

TEST_F(ShellIntegrationTest, IsNoneWhenTheUserPrefersAnotherProgram) {
    Shell->RegisterFileType(Program);
    Write(Defaults, "[Default Applications]\napplication/x-burnwick-image=hex.desktop\n");
    EXPECT_EQ(Shell->AssociatedProgram(), "");
}

TEST_F(ShellIntegrationTest, IsNoneWhenItsEntryIsGone) {
    Shell->RegisterFileType(Program);
    fs::remove(Entry);
    EXPECT_EQ(Shell->AssociatedProgram(), "");
}

TEST_F(ShellIntegrationTest, LivesInTheFoldersThatTheUserHasChosen) {
    const EnvironmentVariable data("XDG_DATA_HOME", Home / "data");
    const EnvironmentVariable config("XDG_CONFIG_HOME", Home / "settings");
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    EXPECT_TRUE(fs::exists(Home / "data/applications/Burnwick.desktop"));
    EXPECT_TRUE(fs::exists(Home / "data/mime/packages/burnwick.xml"));
    EXPECT_TRUE(fs::exists(Home / "settings/mimeapps.list"));
    EXPECT_FALSE(fs::exists(Home / ".local"));
    EXPECT_EQ(DefaultProgram(), "Burnwick.desktop\n");
}

TEST_F(ShellIntegrationTest, TakesRelativeFoldersForNone) {
    const EnvironmentVariable data("XDG_DATA_HOME", "data");
    Shell->RegisterFileType(Program);
    EXPECT_TRUE(fs::exists(Entry));
}

TEST_F(ShellIntegrationTest, OfAUserWithoutAHomeIsNone) {
    for (const auto& home : {std::optional<std::string>(), std::optional<std::string>("")}) {
        const EnvironmentVariable variable("HOME", home);
        const EnvironmentVariable data("XDG_DATA_HOME", Home / "data");
        Shell->RegisterFileType(Program);
        Shell->CreateDesktopShortcut(Program);
        Shell->UnregisterFileType();
        Shell->DeleteDesktopShortcut();
        EXPECT_EQ(Shell->AssociatedProgram(), "");
    }
    EXPECT_THAT(Everything(), IsEmpty());
}

TEST_F(ShellIntegrationTest, StaysAwayFromAHomeThatMayNotBeWritten) {
    fs::permissions(Home, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read
                              | fs::perms::others_exec);
    EXPECT_TRUE(test::DoneAsAnyUser([this] {
        Shell->RegisterFileType(Program);
        Shell->UnregisterFileType();
    }));
    EXPECT_EQ(Shell->AssociatedProgram(), "");
    EXPECT_THAT(Everything(), IsEmpty());
}

TEST_F(ShellIntegrationTest, LeavesAListThatMayNotBeWritten) {
    const std::string others = "[Default Applications]\ntext/html=firefox.desktop\n";
    Write(Defaults, others);
    fs::permissions(Defaults, fs::perms::owner_read | fs::perms::others_read);
    fs::permissions(Defaults.parent_path(), fs::perms::all);
    EXPECT_TRUE(test::DoneAsAnyUser([this] { Shell->RegisterFileType(Program); }));
    EXPECT_EQ(TextOf(Defaults), others);
    EXPECT_EQ(Shell->AssociatedProgram(), "");
}

TEST_F(ShellIntegrationTest, LeavesAListThatIsNoFile) {
    fs::create_directories(Defaults.parent_path());
    ASSERT_EQ(mkfifo(Defaults.c_str(), 0600), 0);
    Shell->RegisterFileType(Program);
    Shell->UnregisterFileType();
    EXPECT_EQ(Shell->AssociatedProgram(), "");
    EXPECT_TRUE(fs::is_fifo(Defaults));
}

TEST_F(ShellIntegrationTest, KeepsAListThatIsALinkOne) {
    Write(Home / "dotfiles/mimeapps.list", "# mine\n");
    fs::create_directories(Defaults.parent_path());
    fs::create_symlink(Home / "dotfiles/mimeapps.list", Defaults);
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    EXPECT_TRUE(fs::is_symlink(Defaults));
}

TEST_F(ShellIntegrationTest, WorksWithoutTheDesktopsOwnTools) {
    const EnvironmentVariable path("PATH", Folder / "no-programs");
    Shell->RegisterFileType(Program);
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    Shell->UnregisterFileType();
    EXPECT_THAT(TextOf(Defaults), "[Default Applications]\n");
}

TEST_F(ShellIntegrationTest, OfTwoCopiesAtOnceLosesNoLine) {
    Write(Defaults, "[Default Applications]\ntext/html=firefox.desktop\n");
    const EnvironmentVariable path("PATH", Folder / "no-programs");  // nothing to wait for in between
    const auto work = [this](const char* program) {
        return [this, program] {
            for (int i = 0; i < 20; ++i) {
                Shell->UnregisterFileType();
                Shell->RegisterFileType(program);
            }
        };
    };
    test::Forked one(work(Program));
    test::Forked other(work(Other));
    EXPECT_TRUE(one.Wait());
    EXPECT_TRUE(other.Wait());
    EXPECT_EQ(TextOf(Defaults),
              "[Default Applications]\napplication/x-burnwick-image=Burnwick.desktop\n"
              "text/html=firefox.desktop\n");
}

}  // namespace
}  // namespace burnwick
