// What the viewer of the activity log shows, and how it clears the log.
#include "gui/frmActivityTest.h"

#include <QDir>
#include <QPalette>
#include <QScreen>

#include "support/ShutFile.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr auto Closing = "=======================End of Log======================\nLog file size: 1KB.\n";

TEST_F(frmActivityTest, ShowsTheLogAndItsSize) {
    LogHolds("C:\\images\\unit.bin\r\nStatus: No response\r\n");
    EXPECT_EQ(Shown(), std::string("C:\\images\\unit.bin\nStatus: No response\n") + Closing);
}

TEST_F(frmActivityTest, NamesItselfAndItsButtons) {
    LogHolds(TwoRecords);
    EXPECT_EQ(Form().windowTitle(), "Activity Log");
    EXPECT_EQ(Button("cmdFind").text(), "&Find");
    EXPECT_EQ(Button("cmdFindNext").text(), "Find &Next [F3]");
    EXPECT_EQ(Button("cmdClear").text(), "C&lear");
    EXPECT_EQ(Button("cmdClose").text(), "&Close");
    for (const char* name : {"txtLog", "cmdFind", "cmdFindNext", "cmdClear", "cmdClose"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
        EXPECT_TRUE(Find<QWidget>(name).isEnabled()) << name;
    }
}

TEST_F(frmActivityTest, OpensAnEmptyLogWithBothFindButtonsDisabled) {
    LogHolds("");
    EXPECT_EQ(Shown(), "The Activity log is empty.");
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    EXPECT_TRUE(Button("cmdClear").isEnabled());
}

TEST_F(frmActivityTest, TakesAMissingLogForAnEmptyOne) {
    EXPECT_EQ(Shown(), "The Activity log is empty.");
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
}

TEST_F(frmActivityTest, BeginsAtTheEndOfTheLog) {
    LogHolds(BigLog(500));
    Form();
    EXPECT_TRUE(Log().textCursor().atEnd());
    EXPECT_GT(Log().verticalScrollBar()->value(), 0);
    EXPECT_EQ(Log().verticalScrollBar()->value(), Log().verticalScrollBar()->maximum());
    EXPECT_EQ(Form().focusWidget(), &Log());
}

TEST_F(frmActivityTest, IsForReadingOnly) {
    LogHolds(TwoRecords);
    const auto before = Shown();
    QTest::keyClicks(&Log(), "abc");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Shown(), before);
    EXPECT_TRUE(Log().isReadOnly());
}

TEST_F(frmActivityTest, DoesNotFollowWhatIsAppendedLater) {
    LogHolds("a\r\n");
    Form();
    LogHolds("b\r\n");
    EXPECT_THAT(Shown(), StartsWith("a\n"));
}

TEST_F(frmActivityTest, CopiesWhatIsSelectedWithItsLines) {
    LogHolds("a\r\nb\r\n");
    Form();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), std::string("a\nb\n") + Closing);
}

TEST_F(frmActivityTest, SelectsByTheKeyboard) {
    LogHolds("abc\r\n");
    Form();
    Press(Qt::Key_Home, Qt::ControlModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "a");
}

TEST_F(frmActivityTest, ShowsWhatIsBehindANul) {
    LogHolds(std::string("a\0b\r\nc\r\n", 8));
    EXPECT_THAT(Shown(), StartsWith("a b\nc\n"));
}

TEST_F(frmActivityTest, ShowsMarkupAsItStands) {
    LogHolds("C:\\<b>&amp;.bin\r\n");
    EXPECT_THAT(Shown(), StartsWith("C:\\<b>&amp;.bin\n"));
}

TEST_F(frmActivityTest, TellsOfAFolderInTheLogsPlace) {
    fs::create_directory(Live);
    EXPECT_THAT(Shown(), HasSubstr("The activity log could not be read:\n" + Live.string()));
    EXPECT_THAT(Shown(), HasSubstr("It is a folder."));
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    EXPECT_FALSE(Button("cmdClear").isEnabled());
}

TEST_F(frmActivityTest, TellsOfALogThatMayNotBeRead) {
    LogHolds("secret\r\n");
    const ShutFile shut(Live);
    EXPECT_THAT(Shown(), HasSubstr("Permission denied."));
    EXPECT_FALSE(Button("cmdFind").isEnabled());
}

TEST_F(frmActivityTest, AsksBeforeItClearsTheLog) {
    LogHolds(TwoRecords);
    Form();
    User.ClickInBox(QMessageBox::No);
    Click("cmdClear");
    ASSERT_EQ(User.Boxes().size(), 1U);
    const auto& box = User.Boxes().front();
    EXPECT_EQ(box.Caption, "Clear Activity Log");
    EXPECT_EQ(box.Text, "Are you sure you want to clear the activity log?");
    EXPECT_EQ(box.Icon, QMessageBox::Question);
    EXPECT_EQ(box.Buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.Default, "No");
}

TEST_F(frmActivityTest, ChangesNothingOnNo) {
    LogHolds(TwoRecords);
    const auto before = Shown();
    User.Next([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); });
    Click("cmdClear");
    EXPECT_EQ(Shown(), before);
    EXPECT_TRUE(fs::exists(Live));
    for (const char* button : {"cmdFind", "cmdFindNext", "cmdClear"}) {
        EXPECT_TRUE(Button(button).isEnabled()) << button;
    }
}

TEST_F(frmActivityTest, DeletesTheLogOnYes) {
    LogHolds(TwoRecords);
    Form();
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdClear");
    EXPECT_EQ(Shown(), "The Activity log is empty.");
    EXPECT_FALSE(fs::exists(Live));
    for (const char* button : {"cmdFind", "cmdFindNext", "cmdClear"}) {
        EXPECT_FALSE(Button(button).isEnabled()) << button;
    }
    Press(Qt::Key_F3);
    EXPECT_EQ(Selected(), "");
}

TEST_F(frmActivityTest, KeepsALogThatCannotBeDeletedAndTellsSo) {
    LogHolds(TwoRecords);
    const auto before = Shown();
    User.ClickInBox(QMessageBox::Yes);
    User.ClickInBox(QMessageBox::Ok);
    {
        const ShutFile shut(Live);
        Click("cmdClear");
    }
    EXPECT_EQ(User.Boxes().back().Icon, QMessageBox::Warning);
    EXPECT_THAT(User.Boxes().back().Text,
                AnyOf(HasSubstr("Permission denied."), HasSubstr("Sharing violation."),
                      HasSubstr("being used by another process")));
    EXPECT_EQ(Shown(), before);
    EXPECT_TRUE(Button("cmdClear").isEnabled());
    EXPECT_TRUE(Button("cmdFind").isEnabled());
}

TEST_F(frmActivityTest, ClosesByItsButton) {
    Form();
    Click("cmdClose");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityTest, ClosesByEscape) {
    for (const char* control : {"txtLog", "cmdClear", "cmdClose"}) {
        Form().show();
        Find<QWidget>(control).setFocus();
        Press(Qt::Key_Escape);
        EXPECT_FALSE(Form().isVisible()) << control;
    }
}

TEST_F(frmActivityTest, ClosesByItsAccessKey) {
    Form();
    Press(Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form().isVisible(); }));
}

TEST_F(frmActivityTest, IsWalkedThroughWithTheTabKey) {
    LogHolds(TwoRecords);
    Form();
    for (const char* name : {"cmdFind", "cmdFindNext", "cmdClear", "cmdClose", "txtLog"}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(Form().focusWidget(), &Find<QWidget>(name)) << name;
    }
}

TEST_F(frmActivityTest, StandsInTheMiddleOfTheScreen) {
    const QPoint away = Form().frameGeometry().center() - Form().screen()->availableGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
}

TEST_F(frmActivityTest, HasRoomFor80ColumnsAndCanBeResized) {
    LogHolds(TwoRecords);
    Form();
    const int column = Log().fontMetrics().horizontalAdvance('M');
    EXPECT_EQ(Log().fontMetrics().horizontalAdvance('i'), column);
    const int most = Form().screen()->availableGeometry().width();
    EXPECT_GE(Log().viewport()->width(), std::min(80 * column, most * 8 / 10));
    const int before = Log().width();
    Form().resize(Form().width() + 50, Form().height() + 50);
    EXPECT_TRUE(QTest::qWaitFor([this, before] { return Log().width() == before + 50; }));
}

TEST_F(frmActivityTest, HasItsPictureTaken) {
    LogHolds(TwoRecords);
    LookFor("flashed");
    TakePicture("frmActivity");
}

TEST_F(frmActivityTest, HasItsPictureTakenWithoutALog) {
    fs::create_directory(Live);
    TakePicture("frmActivity-none");
}

}  // namespace burnwick::test
