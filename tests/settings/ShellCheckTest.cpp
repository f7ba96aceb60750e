#include "settings/ShellCheck.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "support/FakeShell.h"
#include "support/TempFolder.h"

namespace burnwick::test {

using ::testing::ElementsAre;

class ShellCheckTest : public ::testing::Test {
protected:
    // What was done, in its order.
    std::vector<std::string> Check() {
        Record_.clear();
        CheckShellIntegration(
            Shell, Program,
            [this](const std::string& section, const std::string& key) {
                return Settings[section + "/" + key];
            },
            [this](const std::string& section, const std::string& key, const std::string& value) {
                Record_.push_back(key + "=" + value);
                Settings[section + "/" + key] = value;
            });
        return Record_;
    }

    ShellCheckTest() {
        Shell.Note = [this](const std::string& call) { Record_.push_back(call); };
    }

    std::filesystem::path Program = "/opt/Burnwick";
    std::map<std::string, std::string> Settings;
    FakeShell Shell;

private:
    std::vector<std::string> Record_;
};

TEST_F(ShellCheckTest, FindsNothingAndSaysSoAtTheFirstStart) {
    EXPECT_THAT(Check(), ElementsAre("ContextMenu=No", "no shortcut", "Desktop=No"));
}

TEST_F(ShellCheckTest, WritesNoSettingThatIsAlreadyRight) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, LeavesAnAssociationWithThisProgram) {
    Shell.Associated = "/opt/Burnwick";
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, LeavesAnAssociationThatNamesThisProgramInAnotherWay) {
    const TempFolder folder;
    Program = Utf8Path(folder.Write("Burnwick", Bytes(1)));
    Shell.Associated = folder.Path() / "." / "Burnwick";
    Settings = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut"));
}

TEST_F(ShellCheckTest, RegistersAProgramOfWhichAnotherCopyIsAssociated) {
    const TempFolder folder;
    Program = Utf8Path(folder.Write("Burnwick", Bytes(1)));
    Shell.Associated = Utf8Path(folder.Write("Burnwick-old", Bytes(1)));
    Settings = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("register " + Program.string(), "no shortcut"));
}

TEST_F(ShellCheckTest, RegistersAProgramThatWasMoved) {
    Shell.Associated = "/old/Burnwick";
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "ContextMenu=Yes", "no shortcut"));
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "no shortcut"));
}

TEST_F(ShellCheckTest, BelievesTheDesktopAndNotTheSetting) {
    Settings = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("ContextMenu=No", "no shortcut"));
}

TEST_F(ShellCheckTest, CreatesAWantedShortcutAgain) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "Yes"}};
    EXPECT_THAT(Check(), ElementsAre("shortcut /opt/Burnwick"));
}

TEST_F(ShellCheckTest, TakesAnyOtherWishForANo) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "yes"}};
    EXPECT_THAT(Check(), ElementsAre("no shortcut", "Desktop=No"));
}

TEST_F(ShellCheckTest, LooksAtTheAssociationFirst) {
    Shell.Associated = "/old/Burnwick";
    EXPECT_THAT(Check(),
                ElementsAre("register /opt/Burnwick", "ContextMenu=Yes", "no shortcut", "Desktop=No"));
}

}  // namespace burnwick::test
