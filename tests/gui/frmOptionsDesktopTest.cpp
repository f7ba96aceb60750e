#include <memory>

#include "gui/FormTest.h"
#include "settings/ShellCheck.h"
#include "settings/UserHome.h"
#include "settings/frmOptions.h"
#include "settings/modUtility.h"

namespace burnwick::test {

using ::testing::HasSubstr;

// The options on a desktop and with settings that are real, in a home of the test's own.
class frmOptionsDesktopTest : public UserHome {
protected:
    frmOptionsDesktopTest() {
        modUtility::SetIniPath(Home / "Burnwick.ini");
        std::filesystem::create_directories(Home / "Desktop");
    }

    void ConfirmWith(const std::vector<std::string>& boxes, const std::filesystem::path& program) {
        frmOptions form({IniSettings(), *Shell, program});
        form.show();
        for (const auto& box : boxes) {
            auto* const control = form.findChild<QWidget*>(QString::fromStdString(box));
            QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
        }
        QTest::mouseClick(form.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        EXPECT_FALSE(form.isVisible());
    }

    std::string DefaultProgram() const {
        const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "X-Generic");
        return Output({XDG_MIME, "query", "default", "application/x-burnwick-image"});
    }

    std::filesystem::path Launcher = Home / "Desktop/Burnwick.desktop";
    const std::filesystem::path Program = Home / "a \"50%\" $HOME\\x/Burnwick";
};

TEST_F(frmOptionsDesktopTest, MakeTheProgramTheOneThatOpensImages) {
    ConfirmWith({"chkFlashMenu"}, Program);
    EXPECT_EQ(DefaultProgram(), "Burnwick.desktop\n");
    EXPECT_EQ(Output({DESKTOP_FILE_VALIDATE, Entry}), "");
    EXPECT_EQ(Shell->AssociatedProgram(), Program);
    EXPECT_EQ(modUtility::ReadIniValue("Options", "ContextMenu"), "Yes");
}

TEST_F(frmOptionsDesktopTest, TakeThatBackAndLeaveOthers) {
    Write(Defaults, "[Default Applications]\ntext/plain=editor.desktop\n");
    ConfirmWith({"chkFlashMenu"}, Program);
    ConfirmWith({"chkFlashMenu"}, Program);
    EXPECT_EQ(DefaultProgram(), "");
    EXPECT_THAT(TextOf(Defaults), HasSubstr("text/plain=editor.desktop"));
    EXPECT_FALSE(std::filesystem::exists(Entry));
    EXPECT_EQ(modUtility::ReadIniValue("Options", "ContextMenu"), "No");
}

TEST_F(frmOptionsDesktopTest, PutALauncherOnTheDesktopAndTakeItAway) {
    ConfirmWith({"chkDesktop"}, Program);
    EXPECT_EQ(Output({DESKTOP_FILE_VALIDATE, Launcher}), "");
    ConfirmWith({"chkDesktop"}, Program);
    EXPECT_FALSE(std::filesystem::exists(Launcher));
    EXPECT_EQ(modUtility::ReadIniValue("Options", "Desktop"), "No");
}

TEST_F(frmOptionsDesktopTest, FollowAProgramThatWasMovedAtItsNextStart) {
    ConfirmWith({"chkDesktop", "chkFlashMenu"}, Program);
    const auto moved = Home / "moved/Burnwick";
    CheckShellIntegration(*Shell, moved, IniSettings());
    EXPECT_EQ(Shell->AssociatedProgram(), moved);
    EXPECT_THAT(TextOf(Launcher), HasSubstr(moved.string()));
    EXPECT_EQ(modUtility::ReadIniValue("Options", "ContextMenu"), "Yes");
}

TEST_F(frmOptionsDesktopTest, AreClosedOnADesktopThatRefuses) {
    Write(Home / ".local", "no folder");
    ConfirmWith({"chkFlashMenu", "chkDesktop"}, Program);
    EXPECT_EQ(TextOf(Home / ".local"), "no folder");
}

}  // namespace burnwick::test
