#include "gui/DarkDesktop.h"
#include "gui/HelpTest.h"
#include "gui/Picture.h"

#include <QAccessible>
#include <QMenu>
#include <QSplitter>
#include <QTextBlock>

#include "forms/FormParts.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class frmHelpTest : public HelpTest {};

TEST_F(frmHelpTest, IsTitledForTheProgram) {
    EXPECT_EQ(Open().windowTitle(), "Burnwick Help");
}

TEST_F(frmHelpTest, IsTitledForAnEquipmentMakersProgram) {
    EXPECT_EQ(Open(Manual(), /*isOEM=*/true).windowTitle(), "Burnwick (OEM) Help");
}

TEST_F(frmHelpTest, IsAWindowToScreenReaders) {
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&Open());
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Window);
    EXPECT_EQ(seen->text(QAccessible::Description), "Burnwick Help");
    EXPECT_EQ(Help->findChild<QWidget*>("txtPage")->accessibleDescription(), "Page");
    EXPECT_EQ(Help->findChild<QWidget*>("tvwContents")->accessibleDescription(), "Contents");
}

TEST_F(frmHelpTest, ShowsThePage) {
    Open();
    EXPECT_THAT(Shown(), ::testing::StartsWith("Burnwick Help\nStart\nStart one\nA line of the manual"));
}

TEST_F(frmHelpTest, BeginsAtTheBeginning) {
    Open();
    EXPECT_EQ(Scrolled(), 0);
}

TEST_F(frmHelpTest, BlocksNoOtherWindow) {
    Open();
    EXPECT_FALSE(Help->isModal());
    EXPECT_EQ(Help->parentWidget(), nullptr) << "it would stay on top of it";
    EXPECT_TRUE(Owner->isEnabled());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(frmHelpTest, DoesNotKeepTheProgramRunning) {
    EXPECT_FALSE(Open().testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(frmHelpTest, EndsWithItsOwner) {
    Open();
    Owner.reset();
    EXPECT_TRUE(Help.isNull());
}

TEST_F(frmHelpTest, IsClosedByItsTitle) {
    Open();
    CloseWindowByTitle("Burnwick Help");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Help.isNull(); }));
}

TEST_F(frmHelpTest, ComesForwardInsteadOfOpeningTwice) {
    const frmHelp* const first = &Open();
    Owner->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Owner.get()));
    EXPECT_EQ(&Open(), first);
    EXPECT_TRUE(Help->isActiveWindow());
}

TEST_F(frmHelpTest, ComesForwardFromAnIcon) {
    Open().showMinimized();
    Open();
    EXPECT_FALSE(Help->isMinimized());
}

TEST_F(frmHelpTest, OpensAnewAfterItWasClosed) {
    Open().close();
    Open("<h2 id=\"x\">Another page</h2>");
    EXPECT_EQ(Shown(), "Another page");
}

TEST_F(frmHelpTest, StandsWithinTheScreen) {
    EXPECT_TRUE(Owner->screen()->availableGeometry().contains(Open().frameGeometry()));
}

TEST_F(frmHelpTest, ListsTheHeadingsAsATree) {
    Open();
    const auto& contents = Find<QTreeWidget>("tvwContents");
    ASSERT_EQ(contents.topLevelItemCount(), 2);
    EXPECT_EQ(contents.topLevelItem(0)->text(0), "Start");
    EXPECT_EQ(contents.topLevelItem(1)->text(0), "Commands");
    ASSERT_EQ(contents.topLevelItem(1)->childCount(), 2);
    EXPECT_EQ(contents.topLevelItem(1)->child(1)->text(0), "Commands two");
}

TEST_F(frmHelpTest, GoesToTheEntryThatIsClicked) {
    Open();
    ClickEntry("Commands one");
    EXPECT_EQ(TopLine(), "Commands one");
    EXPECT_EQ(Entry(), "Commands one");
}

TEST_F(frmHelpTest, GoesToTheEntryThatIsClickedAgain) {
    Open();
    ClickEntry("Commands one");
    Page().verticalScrollBar()->setValue(Scrolled() + 30);
    ClickEntry("Commands one");
    EXPECT_EQ(TopLine(), "Commands one");
}

TEST_F(frmHelpTest, GoesThroughTheContentsByKeys) {
    Open();
    Find<QTreeWidget>("tvwContents").setFocus();
    ClickEntry("Start");
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(TopLine(), "Start two");
}

TEST_F(frmHelpTest, SelectsTheEntryOfWhatIsRead) {
    Open();
    EXPECT_EQ(Entry(), "");
    Page().verticalScrollBar()->setValue(Page().verticalScrollBar()->maximum());
    EXPECT_EQ(Entry(), "Commands two");
    Page().verticalScrollBar()->setValue(0);
    EXPECT_EQ(Entry(), "");
}

TEST_F(frmHelpTest, KeepsTheEntryThatIsClickedNearTheEnd) {
    Open("<h2 id=\"a\">A</h2><p>a</p><h2 id=\"b\">B</h2><p>b</p>");
    ClickEntry("B");
    EXPECT_EQ(Entry(), "B");
    EXPECT_FALSE(Button("cmdBack").isEnabled()) << "nothing has moved";
}

TEST_F(frmHelpTest, FollowsALinkWithinThePage) {
    Open();
    ClickLink("back");
    EXPECT_EQ(TopLine(), "Start two");
    EXPECT_EQ(Entry(), "Start two");
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(frmHelpTest, FollowsALinkByKeys) {
    Open();
    Press(Qt::Key_Tab);
    Press(Qt::Key_Return);
    EXPECT_EQ(TopLine(), "Start two");
}

TEST_F(frmHelpTest, GoesBackAndForwardToWhereTheUserWas) {
    Open();
    Page().verticalScrollBar()->setValue(333);
    ClickEntry("Commands one");
    const int there = Scrolled();
    ASSERT_TRUE(Button("cmdBack").isEnabled());
    EXPECT_FALSE(Button("cmdForward").isEnabled());
    QTest::mouseClick(&Button("cmdBack"), Qt::LeftButton);
    EXPECT_EQ(Scrolled(), 333);
    EXPECT_FALSE(Button("cmdBack").isEnabled());
    QTest::mouseClick(&Button("cmdForward"), Qt::LeftButton);
    EXPECT_EQ(Scrolled(), there);
    EXPECT_FALSE(Button("cmdForward").isEnabled());
    EXPECT_TRUE(Button("cmdBack").isEnabled());
}

TEST_F(frmHelpTest, GoesBackAndForwardByKeys) {
    Open();
    ClickEntry("Start two");
    ClickEntry("Commands two");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return TopLine() == "Start two"; }));
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return TopLine() == "Commands two"; }));
}

TEST_F(frmHelpTest, ForgetsTheWayForwardOnANewWay) {
    Open();
    ClickEntry("Start two");
    QTest::mouseClick(&Button("cmdBack"), Qt::LeftButton);
    ClickEntry("Commands two");
    EXPECT_FALSE(Button("cmdForward").isEnabled());
}

TEST_F(frmHelpTest, GoesBackToTheSameTextInAnotherSize) {
    Open();
    ClickEntry("Start two");
    ClickEntry("Commands one");
    Press(Qt::Key_Plus, Qt::ControlModifier);
    QTest::mouseClick(&Button("cmdBack"), Qt::LeftButton);
    EXPECT_EQ(TopLine(), "Start two");
}

TEST_F(frmHelpTest, HandsAWebAddressToTheProgram) {
    Open();
    ClickLink("web");
    EXPECT_THAT(Opened, ElementsAre("https://www.burnwick.example/"));
}

TEST_F(frmHelpTest, IsZoomedByKeys) {
    Open();
    const double size = Page().font().pointSizeF();
    Press(Qt::Key_Plus, Qt::ControlModifier);
    Press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(Page().font().pointSizeF(), size + 2);
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(Page().font().pointSizeF(), size + 1);
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Page().font().pointSizeF(), size);
}

TEST_F(frmHelpTest, StaysReadableHoweverItIsZoomed) {
    Open();
    for (int i = 0; i < 40; ++i) {
        Press(Qt::Key_Minus, Qt::ControlModifier);
    }
    EXPECT_GE(Page().font().pointSizeF(), 4);
    for (int i = 0; i < 60; ++i) {
        Press(Qt::Key_Plus, Qt::ControlModifier);
    }
    EXPECT_LE(Page().font().pointSizeF(), 40);
}

TEST_F(frmHelpTest, IsClosedByEscape) {
    Open();
    Press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Help.isNull(); }));
}

TEST_F(frmHelpTest, BeginsAtThePageAndIsWalkedThroughWithTheTabKey) {
    Open("<h2 id=\"a\">A</h2>");
    std::vector<std::string> stops;
    for (int i = 0; i < 4; ++i) {
        stops.push_back(Help->focusWidget()->objectName().toStdString());
        Press(Qt::Key_Tab);
    }
    EXPECT_THAT(stops, ElementsAre("txtPage", "txtFind", "tvwContents", "txtPage"));
}

TEST_F(frmHelpTest, CallsItsControlsByTheirNames) {
    Open();
    for (const char* name : {"cmdBack", "cmdForward", "lblFind", "txtFind", "lblFound", "cmdFindPrevious",
                             "cmdFindNext", "tvwContents", "txtPage"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
    }
}

TEST_F(frmHelpTest, StaysWhereItIsWhenItIsClicked) {
    Open();
    FindBox().setText("Burnwick");
    Page().verticalScrollBar()->setValue(500);
    QTest::mouseClick(Page().viewport(), Qt::LeftButton, {}, QPoint(300, 300));
    EXPECT_EQ(Scrolled(), 500);
}

TEST_F(frmHelpTest, OpensItsMenusWithoutWaitingForThem) {
    Open();
    for (QWidget* const control : {Page().viewport(), static_cast<QWidget*>(&FindBox())}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(30, 5), control->mapToGlobal(QPoint(30, 5)));
        QApplication::sendEvent(control, &event);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr) << "and it is still open";
        menu->close();
    }
}

TEST_F(frmHelpTest, FollowsThePaletteAndStaysWhereItIs) {
    Open();
    ClickEntry("Start two");
    QPalette dark;
    dark.setColor(QPalette::Link, QColor(Qt::yellow));
    QApplication::setPalette(dark);
    EXPECT_TRUE(QTest::qWaitFor([this] {
        QTextCursor end(Page().document());
        end.movePosition(QTextCursor::End);
        end.movePosition(QTextCursor::Left, QTextCursor::MoveAnchor, 3);
        return end.charFormat().foreground().color() == QColor(Qt::yellow);
    }));
    EXPECT_EQ(TopLine(), "Start two");
    EXPECT_EQ(Entry(), "Start two");
}

TEST_F(frmHelpTest, HasItsPicturesTaken) {
    // The manual shows this picture: there is none yet when it is taken for the first time.
    std::filesystem::exists(HELP_FILE) ? OpenFile(HELP_FILE) : Open();
    EXPECT_THAT(Shown(), ::testing::StartsWith("Burnwick Help"));
    Help->resize(940, 680);
    EXPECT_TRUE(TakePictureOf(*Help, "frmHelp"));
    QTest::keyClicks(&FindBox(), "unit");
    EXPECT_TRUE(TakePictureOf(*Help, "frmHelp-find"));
    const DarkDesktop dark;
    EXPECT_TRUE(TakePictureOf(*Help, "frmHelp-dark"));
}

}  // namespace burnwick::test
