// The find dialog of the activity log.
#include "log/frmActivityFind.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include "gui/FormTest.h"

namespace burnwick::test {

class frmActivityFindTest : public FormTest {
protected:
    std::unique_ptr<QDialog> New() override { return std::make_unique<frmActivityFind>(Query, Parent); }

    QLineEdit& Wanted() { return Find<QLineEdit>("txtFind"); }
    QCheckBox& Match() { return Find<QCheckBox>("chkMatch"); }

    LogQuery Query;
};

TEST_F(frmActivityFindTest, AsksWhatToFind) {
    EXPECT_EQ(Form().windowTitle(), "Find");
    EXPECT_EQ(Find<QLabel>("Label1").text(), "Fi&nd What:");
    EXPECT_EQ(Match().text(), "Match &Case");
    EXPECT_EQ(Button("cmdFind").text(), "&Find");
    EXPECT_EQ(Button("cmdCancel").text(), "&Cancel");
    EXPECT_TRUE(Form().isModal());
    EXPECT_EQ(Form().focusWidget(), &Wanted());
}

TEST_F(frmActivityFindTest, OffersFindWhileThereIsAText) {
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    QTest::keyClicks(&Wanted(), " ");
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    Press(Qt::Key_Backspace);
    EXPECT_FALSE(Button("cmdFind").isEnabled());
}

TEST_F(frmActivityFindTest, SelectsTheTextOfTheLastSearchForOvertyping) {
    Query.Text = "Flashed";
    Form();
    EXPECT_EQ(Wanted().selectedText(), "Flashed");
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    QTest::keyClicks(&Wanted(), "S");
    EXPECT_EQ(Wanted().text(), "S");
}

TEST_F(frmActivityFindTest, ShowsWhetherCaseMatteredLastTime) {
    Query.MatchCase = true;
    EXPECT_TRUE(Match().isChecked());
}

TEST_F(frmActivityFindTest, GivesTextAndMatchCaseOnFind) {
    QTest::keyClicks(&Wanted(), " Flashed & <b> ");
    Tick("chkMatch");
    EXPECT_EQ(Query.Text, "") << "nothing before Find";
    Click(Button("cmdFind"));
    EXPECT_EQ(Query.Text, " Flashed & <b> ");
    EXPECT_TRUE(Query.MatchCase);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, TakesEnterForFind) {
    QTest::keyClicks(&Wanted(), "Flashed");
    Press(Qt::Key_Return);
    EXPECT_EQ(Query.Text, "Flashed");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, TakesEnterForNothingWithoutAText) {
    Form();
    Press(Qt::Key_Enter);
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmActivityFindTest, EmptiesTheTextButKeepsMatchCaseOnCancel) {
    Query.Text = "Flashed";
    Tick("chkMatch");
    Click(Button("cmdCancel"));
    EXPECT_EQ(Query.Text, "");
    EXPECT_TRUE(Query.MatchCase);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, TakesEscapeForCancel) {
    Query.Text = "Flashed";
    Form();
    Press(Qt::Key_Escape);
    EXPECT_EQ(Query.Text, "");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, TakesItsClosingForCancel) {
    Query.Text = "Flashed";
    Form().close();
    EXPECT_EQ(Query.Text, "");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, IsLeftByItsAccessKeys) {
    Query.Text = "Flashed";
    Form();
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form().isVisible(); }));
    EXPECT_EQ(Query.Text, "Flashed");
}

TEST_F(frmActivityFindTest, GoesThroughTheControlsThatShareAnAccessKey) {
    Form();
    Press(Qt::Key_C, Qt::AltModifier);
    auto* const first = Form().focusWidget();
    Press(Qt::Key_C, Qt::AltModifier);
    auto* const second = Form().focusWidget();
    EXPECT_THAT((std::vector<QWidget*>{first, second}),
                ::testing::UnorderedElementsAre(&Match(), &Button("cmdCancel")));
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmActivityFindTest, IsWalkedThroughWithTheTabKey) {
    Query.Text = "x";
    Form();
    for (const char* name : {"chkMatch", "cmdFind", "cmdCancel", "txtFind"}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(Form().focusWidget(), &Find<QWidget>(name)) << name;
    }
}

TEST_F(frmActivityFindTest, StandsOverTheViewer) {
    QWidget viewer;
    viewer.setGeometry(100, 60, 500, 400);
    viewer.show();
    Parent = &viewer;
    Form();
    const QPoint away = Form().frameGeometry().center() - viewer.frameGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
    Destroy();
}

TEST_F(frmActivityFindTest, StaysOnTheScreenWhereverTheViewerIs) {
    QWidget viewer;
    const QRect screen = viewer.screen()->availableGeometry();
    for (const QPoint place : {screen.topLeft() - QPoint(350, 350), screen.bottomRight() - QPoint(20, 20)}) {
        viewer.setGeometry(QRect(place, QSize(400, 400)));
        viewer.show();
        Parent = &viewer;
        Form();
        EXPECT_TRUE(screen.contains(Form().frameGeometry()));
        Destroy();
    }
}

TEST_F(frmActivityFindTest, CallsItsControlsByTheirNames) {
    for (const char* name : {"Label1", "txtFind", "chkMatch", "cmdFind", "cmdCancel"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
    }
}

TEST_F(frmActivityFindTest, HasItsPictureTaken) {
    Query.Text = "Flashed";
    TakePicture("frmActivityFind");
}

}  // namespace burnwick::test
