// Searching in the activity log.
#include "gui/frmActivityTest.h"

#include <QScreen>

namespace burnwick::test {

using ::testing::IsEmpty;

constexpr auto Name = [](const Answers::Box& box) { return box.Caption + ": " + box.Text; };

TEST_F(frmActivityTest, SelectsTheFirstMatchInTheLog) {
    LogHolds(TwoRecords);
    LookFor("Flashed");
    EXPECT_EQ(Selected(), "Flashed");
    EXPECT_EQ(SelectionStart(), Log().toPlainText().indexOf("Flashed"));
    EXPECT_EQ(Form().focusWidget(), &Log());
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    EXPECT_TRUE(Button("cmdFindNext").isEnabled());
    EXPECT_TRUE(Button("cmdClear").isEnabled());
}

TEST_F(frmActivityTest, FindsTheNextMatch) {
    LogHolds(TwoRecords);
    LookFor("Flashed");
    Click("cmdFindNext");
    EXPECT_EQ(SelectionStart(), Log().toPlainText().lastIndexOf("Flashed"));
    EXPECT_EQ(Selected(), "Flashed");
}

TEST_F(frmActivityTest, DoesNotWrapBehindTheLastMatch) {
    LogHolds(TwoRecords);
    LookFor("Flashed");
    Press(Qt::Key_F3);
    const int last = SelectionStart();
    AwaitNotFound();
    Press(Qt::Key_F3);
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(Name(User.Boxes().front()), "Not Found: Cannot find \"Flashed\".");
    EXPECT_EQ(User.Boxes().front().Icon, QMessageBox::Information);
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    EXPECT_EQ(SelectionStart(), last) << "the last match stays selected";
    Press(Qt::Key_F3);
    EXPECT_EQ(User.Boxes().size(), 1U) << "there is nothing to go on from";
}

TEST_F(frmActivityTest, FindsAgainAfterASearchThatFailed) {
    LogHolds(TwoRecords);
    Form();
    AwaitFind("nowhere");
    AwaitNotFound();
    Click("cmdFind");
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    LookFor("Flashed");
    EXPECT_EQ(Selected(), "Flashed");
    EXPECT_TRUE(Button("cmdFindNext").isEnabled());
}

TEST_F(frmActivityTest, DoesNotFindFlashedByASmallLetterWhenCaseMatters) {
    LogHolds(TwoRecords);
    Form();
    AwaitFind("flashed", true);
    AwaitNotFound();
    Click("cmdFind");
    EXPECT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(Selected(), "");
}

TEST_F(frmActivityTest, FindsFlashedByASmallLetterWhenCaseDoesNotMatter) {
    LogHolds(TwoRecords);
    LookFor("flashed");
    EXPECT_EQ(Selected(), "Flashed");
}

TEST_F(frmActivityTest, KnowsSmallLettersOfEveryLanguage) {
    LogHolds("C:\\\u00C4\u0416\u03A9\U00010400.bin\r\nI\u0130.bin\r\n");
    LookFor("\u00E4\u0436\u03C9\U00010428");
    EXPECT_EQ(Selected(), "\u00C4\u0416\u03A9\U00010400");
    LookFor(".BIN");
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectionStart(), Log().toPlainText().lastIndexOf(".bin"));
}

TEST_F(frmActivityTest, SearchesTheClosingLinesToo) {
    LogHolds(TwoRecords);
    LookFor("end of log");
    EXPECT_EQ(Selected(), "End of Log");
}

TEST_F(frmActivityTest, FindsNothingThatIsLongerThanTheLog) {
    LogHolds("a\r\n");
    Form();
    AwaitFind(std::string(4000, 'a'));
    User.Next([](QDialog& box) {
        EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    Click("cmdFind");
    EXPECT_EQ(User.Boxes().size(), 1U);
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
}

TEST_F(frmActivityTest, LeavesTheSelectionAndSearchesNothingOnCancel) {
    LogHolds(TwoRecords);
    LookFor("Status");
    const int before = SelectionStart();
    User.Next([](QDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
    });
    Click("cmdFind");
    EXPECT_EQ(Selected(), "Status");
    EXPECT_EQ(SelectionStart(), before);
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectionStart(), before) << "there is nothing left to look for";
    EXPECT_TRUE(Button("cmdFindNext").isEnabled());
}

TEST_F(frmActivityTest, TakesTheClosingOfTheFindDialogForCancel) {
    LogHolds(TwoRecords);
    LookFor("Status");
    const int before = SelectionStart();
    User.Next([](QDialog& dialog) { dialog.close(); });
    Click("cmdFind");
    User.Escape();
    Click("cmdFind");
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectionStart(), before);
}

TEST_F(frmActivityTest, DoesNothingOnFindNextBeforeTheFirstSearch) {
    LogHolds(TwoRecords);
    Form();
    Click("cmdFindNext");
    EXPECT_THAT(User.Boxes(), IsEmpty());
    EXPECT_EQ(Selected(), "");
}

TEST_F(frmActivityTest, FindsTheNextMatchByF3OnAButton) {
    LogHolds(TwoRecords);
    LookFor("Flashed");
    Button("cmdClose").setFocus();
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectionStart(), Log().toPlainText().lastIndexOf("Flashed"));
    EXPECT_EQ(Form().focusWidget(), &Log());
}

TEST_F(frmActivityTest, FindsByAccessKeysAndEnter) {
    LogHolds(TwoRecords);
    Form();
    AwaitFind("Flashed");
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Selected() == "Flashed"; }));
    const int first = SelectionStart();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Press(Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this, first] { return SelectionStart() > first; }));
    AwaitFind("Status");
    Press(Qt::Key_Return);
    EXPECT_EQ(Selected(), "Status");
}

// Logs too long to be in the box at once.

TEST_F(frmActivityTest, ShowsTheEndOfABigLogAtOnceAndThenAllOfIt) {
    const auto log = BigLog(40'000);
    LogHolds(log);
    Form();
    const int end = Log().verticalScrollBar()->maximum();
    EXPECT_EQ(Log().verticalScrollBar()->value(), end);
    EXPECT_TRUE(Shown().ends_with("KB.\n"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Log().blockCount() == 40'004; }, 60'000));
    EXPECT_TRUE(Shown().starts_with("C:\\images\\first.bin\nFlashed: 07/22/2004 3:05:09 PM, line 0\n"));
    EXPECT_GT(Log().verticalScrollBar()->maximum(), end);
    EXPECT_EQ(Log().verticalScrollBar()->value(), Log().verticalScrollBar()->maximum());
    EXPECT_TRUE(Log().textCursor().atEnd());
    QString whole = QString::fromStdString(log);
    EXPECT_TRUE(Log().toPlainText().startsWith(whole.remove('\r')));
}

TEST_F(frmActivityTest, KeepsTheViewWhereItIsWhileABigLogFillsUp) {
    LogHolds(BigLog(40'000));
    Form();
    Log().verticalScrollBar()->setValue(100);
    const auto first = [this] { return Log().cursorForPosition({2, 2}).block().text().toStdString(); };
    const auto before = first();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Log().blockCount() == 40'004; }, 60'000));
    EXPECT_EQ(first(), before);
}

TEST_F(frmActivityTest, GoesToTheBeginningOfABigLogOnceItIsThere) {
    LogHolds(BigLog(40'000));
    Form();
    Press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Log().blockCount() == 40'004; }, 60'000));
    EXPECT_TRUE(Log().textCursor().atStart());
    EXPECT_EQ(Log().verticalScrollBar()->value(), 0);
}

TEST_F(frmActivityTest, StaysWhereTheUserClickedMeanwhile) {
    LogHolds(BigLog(40'000));
    Form();
    Press(Qt::Key_Home, Qt::ControlModifier);
    QTest::mouseClick(Log().viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Log().blockCount() == 40'004; }, 60'000));
    EXPECT_FALSE(Log().textCursor().atStart());
}

TEST_F(frmActivityTest, SelectsAllOfABigLogOnceItIsThere) {
    LogHolds(BigLog(40'000));
    Form();
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Log().blockCount() == 40'004; }, 60'000));
    EXPECT_EQ(Selected().size(), Shown().size() + 80'006) << "a line end is three bytes there";
}

TEST_F(frmActivityTest, FindsTheFirstLineOfABigLogBeforeItIsShown) {
    LogHolds(BigLog(40'000));
    LookFor("IMAGES\\FIRST");
    EXPECT_TRUE(IsSearching());
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    EXPECT_FALSE(Button("cmdFindNext").isEnabled());
    EXPECT_FALSE(Button("cmdClear").isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !IsSearching(); }, 60'000));
    EXPECT_EQ(Selected(), "images\\first");
    EXPECT_EQ(SelectionStart(), 3);
    EXPECT_TRUE(Button("cmdFind").isEnabled());
}

TEST_F(frmActivityTest, FindsALineDeepInABigLog) {
    LogHolds(BigLog(40'000));
    LookFor("line 25000");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !IsSearching(); }, 60'000));
    EXPECT_EQ(Selected(), "line 25000");
}

TEST_F(frmActivityTest, EndsASearchWhenItIsClosed) {
    LogHolds(BigLog(40'000));
    LookFor("IMAGES\\FIRST");
    ASSERT_TRUE(IsSearching());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_FALSE(IsSearching());
    QTest::qWait(1);
    EXPECT_EQ(Selected(), "");
}

TEST_F(frmActivityTest, EndsASearchWhenItIsDestroyed) {
    LogHolds(BigLog(40'000));
    LookFor("IMAGES\\FIRST");
    ASSERT_TRUE(IsSearching());
    Destroy();
    EXPECT_FALSE(IsSearching());
}

TEST_F(frmActivityTest, FindsNothingInABigLogOfOneLetterForALongTextOfIt) {
    LogHolds(std::string(2'000'000, 'a'));
    Form();
    AwaitFind(std::string(30'000, 'a') + "b");
    AwaitNotFound();
    Click("cmdFind");
    EXPECT_TRUE(QTest::qWaitFor([this] { return User.Boxes().size() == 1 && !IsSearching(); }, 60'000));
}

TEST_F(frmActivityTest, FindsAndCopiesInALineOfMegabytes) {
    const std::string line = std::string(3'000'005, 'x') + "needle" + std::string(1'000'000, 'y');
    LogHolds("first\r\n" + line + "\r\nlast\r\n");
    LookFor("xneedley");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !IsSearching(); }, 60'000));
    EXPECT_EQ(Selected(), "xneedley");
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().toStdString().starts_with("first\n" + line + "\nlast\n"));
}

TEST_F(frmActivityTest, SelectsAndCopiesAcrossAPlaceWhereALineIsBroken) {
    LogHolds(std::string(9'998, 'x') + "needle" + std::string(20'000, 'y') + "last\r\n");
    LookFor("needle");
    EXPECT_EQ(Log().textCursor().selectedText().remove(QChar::ParagraphSeparator), "needle");
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "needle");
    LookFor("ylast");
    EXPECT_EQ(Selected(), "ylast");
}

}  // namespace burnwick::test
