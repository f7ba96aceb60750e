// A walk through the whole window by keyboard alone.
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <algorithm>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

}  // namespace

class frmMainKeyboard : public WindowTest {
protected:
    void Open() {
        Start();
        QApplication::setActiveWindow(Window.get());
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QWidget* const popup = QApplication::activePopupWidget();
        QTest::keyClick(popup != nullptr ? popup : Window->focusWidget(), static_cast<Qt::Key>(key),
                        modifiers);
    }
    // A menu by its access key, and a command in it.
    void Command(Qt::Key menu, int command) const {
        QApplication::setActiveWindow(Window.get());
        Press(menu, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
        Press(command);
    }
    // Goes on to a control by the Tab key.
    void TabTo(const char* control) const {
        constexpr int stops = 8;
        for (int stop = 0; stop < stops && Window->focusWidget() != Find(control); ++stop) {
            Press(Qt::Key_Tab);
        }
        EXPECT_EQ(Window->focusWidget(), Find(control));
    }
    void EnterInDialog() {
        User.Next([](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); });
    }
};

TEST_F(frmMainKeyboard, ProgramsAndVerifiesAUnit) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Open();
    User.TypeFile(Image());
    User.Next([](QDialog& question) { QTest::keyClick(&question, Qt::Key_Y, Qt::AltModifier); });
    Press(Qt::Key_Return);
    EXPECT_THAT(Display(), EndsWith("Verifying was successfully.\n"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainKeyboard, ReadsAUnit) {
    ConnectUnitOfSize(524'288);
    Open();
    EnterInDialog();
    User.TypeFile(Folder / "read.bin");
    TabTo("cmdUpload");
    Press(Qt::Key_Space);
    EXPECT_EQ(ReadFile(Folder / "read.bin"), Unit->Flash());
}

TEST_F(frmMainKeyboard, CancelsARun) {
    Open();
    WhenStatus("Waiting for response", [this] {
        TabTo("cmdQuit");
        Press(Qt::Key_Space);
    });
    User.TypeFile(Image());
    Press(Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Display().find("ancel") != std::string::npos; }))
        << Display();
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainKeyboard, OpensEveryDialogOfTheMenus) {
    Open();
    const std::vector<std::pair<Qt::Key, int>> commands{
        {Qt::Key_F, Qt::Key_D}, {Qt::Key_F, Qt::Key_M}, {Qt::Key_T, Qt::Key_P},
        {Qt::Key_T, Qt::Key_L}, {Qt::Key_T, Qt::Key_O}, {Qt::Key_H, Qt::Key_A},
    };
    for (const auto& [menu, command] : commands) {
        User.Escape();
        Command(menu, command);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File", "File Compare", "COM Port Settings",
                                            "Activity Log", "Options", "About Burnwick"));
}

TEST_F(frmMainKeyboard, OpensTheHelp) {
    HelpFile = Folder.Write("Burnwick.hlp", {});
    Open();
    Command(Qt::Key_H, Qt::Key_H);
    EXPECT_TRUE(QTest::qWaitFor([] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->windowTitle() == "Burnwick Help" && window->isVisible();
        });
    }));
}

TEST_F(frmMainKeyboard, ProgramsARecentFile) {
    ConnectUnitOfSize(ImageSize);
    Settings["LastOpenFile/1"] = Image();
    Open();
    Command(Qt::Key_F, Qt::Key_1);
    EXPECT_EQ(Status(), Programmed) << Display();
}

TEST_F(frmMainKeyboard, ReadsTheDisplay) {
    Open();
    TabTo("txtDisplay");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Window->focusWidget(), Find("cmdDownload")) << "a stop, and no trap";
}

TEST_F(frmMainKeyboard, LeavesTheProgram) {
    Open();
    Command(Qt::Key_F, Qt::Key_X);
    EXPECT_FALSE(Window->isVisible());
}

}  // namespace burnwick::test
