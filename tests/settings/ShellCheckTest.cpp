#include "settings/ShellCheck.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

namespace burnwick::test {

using ::testing::ElementsAre;

// A desktop that keeps a record of what it is asked to do.
class FakeShell final : public ShellIntegration {
public:
    explicit FakeShell(std::vector<std::string>& record) : Record_(record) {}

    std::filesystem::path AssociatedProgram() const override { return Associated; }
    void RegisterFileType(const std::filesystem::path& program) override {
        Record_.push_back("register " + program.string());
    }
    void UnregisterFileType() override { Record_.emplace_back("unregister"); }
    void CreateDesktopShortcut(const std::filesystem::path& program) override {
        Record_.push_back("create " + program.string());
    }
    void DeleteDesktopShortcut() override { Record_.emplace_back("delete"); }

    std::filesystem::path Associated;

private:
    std::vector<std::string>& Record_;
};

class ShellCheckTest : public ::testing::Test {
protected:
    // What was done, in its order.
    std::vector<std::string> Check() {
        Record_.clear();
        CheckShellIntegration(
            Shell, "/opt/Burnwick",
            [this](const std::string& section, const std::string& key) {
                return Settings[section + "/" + key];
            },
            [this](const std::string& section, const std::string& key, const std::string& value) {
                Record_.push_back(key + "=" + value);
                Settings[section + "/" + key] = value;
            });
        return Record_;
    }

    std::map<std::string, std::string> Settings;

private:
    std::vector<std::string> Record_;

protected:
    FakeShell Shell{Record_};
};

TEST_F(ShellCheckTest, FindsNothingAndSaysSoAtTheFirstStart) {
    EXPECT_THAT(Check(), ElementsAre("ContextMenu=No", "delete", "Desktop=No"));
}

TEST_F(ShellCheckTest, WritesNoSettingThatIsAlreadyRight) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("delete"));
}

TEST_F(ShellCheckTest, LeavesAnAssociationWithThisProgram) {
    Shell.Associated = "/opt/Burnwick";
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("delete"));
}

TEST_F(ShellCheckTest, RegistersAProgramThatWasMoved) {
    Shell.Associated = "/old/Burnwick";
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "ContextMenu=Yes", "delete"));
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "delete"));
}

TEST_F(ShellCheckTest, BelievesTheDesktopAndNotTheSetting) {
    Settings = {{"Options/ContextMenu", "Yes"}, {"Options/Desktop", "No"}};
    EXPECT_THAT(Check(), ElementsAre("ContextMenu=No", "delete"));
}

TEST_F(ShellCheckTest, CreatesAWantedShortcutAgain) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "Yes"}};
    EXPECT_THAT(Check(), ElementsAre("create /opt/Burnwick"));
}

TEST_F(ShellCheckTest, TakesAnyOtherWishForANo) {
    Settings = {{"Options/ContextMenu", "No"}, {"Options/Desktop", "yes"}};
    EXPECT_THAT(Check(), ElementsAre("delete", "Desktop=No"));
}

TEST_F(ShellCheckTest, LooksAtTheAssociationFirst) {
    Shell.Associated = "/old/Burnwick";
    EXPECT_THAT(Check(), ElementsAre("register /opt/Burnwick", "ContextMenu=Yes", "delete", "Desktop=No"));
}

}  // namespace burnwick::test
