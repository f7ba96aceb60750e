#include "settings/ShellCheck.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "support/FakeSettings.h"
#include "support/FakeShell.h"
#include "support/TempFolder.h"

namespace burnwick::test {

using ::testing::ElementsAre;

class ShellCheckTest : public ::testing::Test {
protected:
    // What was done, in its order.
    std::vector<std::string> Check() {
        Record_.clear();
        CheckShellIntegration(Shell, Program, Settings);
        return Record_;
    }

    ShellCheckTest() {
        Shell.Note = [this](const std::string& call) { Record_.push_back(call); };
        Settings.OnStore = [this](const auto& name, const auto& value) {
            Record_.push_back(name.substr(name.find('/') + 1) + "=" + value);
        };
    }

    std::filesystem::path Program = "/opt/Burnwick";
    FakeSettings Settings;
    FakeShell Shell;

private:
    std::vector<std::string> Record_;
};

TEST_F(ShellCheckTest, FindsNothingAndSaysSoAtTheFirstStart) {
    EXPECT_THAT(Check(), ElementsAre("no shortcut", "ContextMenu=No", "Desktop=No"));
}

TEST_F(ShellCheckTest, WritesNoSettingThatIsAlreadyRight) {
    Settings.Values = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, LeavesAnAssociationWithThisProgram) {
    Shell.Associated = "/opt/Burnwick";
    Settings.Values = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, LeavesAnAssociationThatNamesThisProgramInAnotherWay) {
    const TempFolder folder;
    Program = Utf8Path(folder.Write("Burnwick", Bytes(1)));
    Shell.Associated = folder.Path() / "." / "Burnwick";
    Settings.Values = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, RegistersAProgramOfWhichAnotherCopyIsAssociated) {
    const TempFolder folder;
    Program = Utf8Path(folder.Write("Burnwick", Bytes(1)));
    Shell.Associated = Utf8Path(folder.Write("Burnwick-old", Bytes(1)));
    Settings.Values = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("register " + Program.string(), "no shortcut"));
}

TEST_F(ShellCheckTest, RegistersAProgramThatWasMoved) {
    Shell.Associated = "/old/Burnwick";
    Settings.Values = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "no shortcut", "ContextMenu=Yes"));
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "no shortcut"));
}

TEST_F(ShellCheckTest, BelievesTheDesktopAndNotTheSetting) {
    Settings.Values = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut", "ContextMenu=No"));
}

TEST_F(ShellCheckTest, CreatesAWantedShortcutAgain) {
    Settings.Values = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "Yes"}};
    EXPECT_THAT(Check(), ElementsAre("shortcut /opt/Burnwick"));
}

TEST_F(ShellCheckTest, TakesAnyOtherWishForANo) {
    Settings.Values = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "yes"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut", "Desktop=No"));
}

TEST_F(ShellCheckTest, LooksAtTheAssociationFirst) {
    Shell.Associated = "/old/Burnwick";
    EXPECT_THAT(Check(),
                ElementsAre("register /opt/Burnwick", "no shortcut", "ContextMenu=Yes", "Desktop=No"));
}

}  // namespace burnwick::test
