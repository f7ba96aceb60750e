#include "settings/DesktopEntry.h"

#include <gmock/gmock.h>

#include "settings/HostilePaths.h"
#include "settings/UserHome.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

std::string Entry(const std::string& exec) {
    return "[Desktop Entry]\nType=Application\nExec=" + exec + "\n";
}

TEST(DesktopEntry, OfAPlainPathHasNoQuotes) {
    EXPECT_THAT(AssociationEntry("/opt/burnwick-2.08/Burnwick"),
                HasSubstr("\nExec=/opt/burnwick-2.08/Burnwick %f\n"));
}

TEST(DesktopEntry, QuotesAndEscapesAPathTwice) {
    EXPECT_THAT(AssociationEntry(R"(/a b/$c"d\e)"), HasSubstr(R"(Exec="/a b/\\$c\\"d\\\\e" %f)"));
}

TEST(DesktopEntry, GivesAPathWithAPercentToAShellAsAnArgument) {
    EXPECT_THAT(AssociationEntry("/100%/Burnwick"),
                HasSubstr(R"(Exec=/bin/sh -c "exec \\"\\$0\\" \\"\\$@\\"" /100%%/Burnwick %f)"));
}

TEST(DesktopEntry, ThatOpensImagesSaysWhatItIs) {
    const auto entry = AssociationEntry("/opt/Burnwick");
    EXPECT_THAT(entry, HasSubstr("\nName=Flash with Burnwick\n"));
    EXPECT_THAT(entry, HasSubstr("\nMimeType=application/x-burnwick-image;\n"));
    EXPECT_THAT(entry, HasSubstr("\nTerminal=false\n"));
}

TEST(DesktopEntry, ThatStartsTheProgramTakesNoFile) {
    const auto entry = LauncherEntry("/opt/Burnwick");
    EXPECT_THAT(entry, HasSubstr("\nName=Burnwick\n"));
    EXPECT_THAT(entry, HasSubstr("\nExec=/opt/Burnwick\n"));
    EXPECT_THAT(entry, Not(HasSubstr("MimeType")));
}

TEST(DesktopEntry, GivesItsProgramBackWhateverThePathHolds) {
    for (const auto* const folder : test::HostileFolders) {
        const auto program = fs::path("/opt") / folder / "Burnwick";
        EXPECT_EQ(ProgramOf(AssociationEntry(program)), program);
    }
}

TEST(DesktopEntry, IsReadAsOthersWriteItToo) {
    EXPECT_EQ(ProgramOf(Entry("/opt/Burnwick")), "/opt/Burnwick");
    EXPECT_EQ(ProgramOf(Entry("  \"/opt/Burnwick\"   %f ")), "/opt/Burnwick");
    EXPECT_EQ(ProgramOf("# Exec=no\n[Other]\nExec=no\n" + Entry("yes") + "[Other]\nExec=no\n"), "yes");
}

TEST(DesktopEntry, WithoutAProgramGivesNone) {
    EXPECT_EQ(ProgramOf(""), "");
    EXPECT_EQ(ProgramOf(Entry("")), "");
    EXPECT_EQ(ProgramOf(Entry("%f")), "");
    EXPECT_EQ(ProgramOf("Exec=/opt/Burnwick %f\n"), "");
}

TEST(DesktopEntry, ThatIsBrokenOffIsReadToItsEnd) {
    EXPECT_EQ(ProgramOf(Entry(R"("/opt/Burn)")), "/opt/Burn");
    EXPECT_EQ(ProgramOf(Entry(R"("/opt/Burn\)")), R"(/opt/Burn\)");
}

class DesktopEntryTest : public test::UserHome {
protected:
    // The complaints of the desktops' own checker.
    std::string Complaints(const std::string& entry) const {
        const auto path = Home / "Checked.desktop";
        Write(path, entry);
        return Output({DESKTOP_FILE_VALIDATE, path});
    }
};

TEST_F(DesktopEntryTest, IsAValidOneWhateverThePathHolds) {
    for (const auto* const folder : test::HostileFolders) {
        const auto program = fs::path("/opt") / folder / "Burnwick";
        EXPECT_EQ(Complaints(AssociationEntry(program)), "") << folder;
        EXPECT_EQ(Complaints(LauncherEntry(program)), "") << folder;
    }
}

}  // namespace
}  // namespace burnwick
