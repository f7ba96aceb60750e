// The find dialog of the activity log.
#include "log/frmActivityFind.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <memory>

namespace burnwick::test {

class frmActivityFindTest : public ::testing::Test {
protected:
    frmActivityFind& Form(QWidget* parent = nullptr) {
        if (!Form_) {
            Form_ = std::make_unique<frmActivityFind>(Query, parent);
            Form_->show();
            Form_->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(Form_.get()));
        }
        return *Form_;
    }
    void Destroy() { Form_.reset(); }

    template <typename Control>
    Control& Find(const char* name) {
        auto* const control = Form().findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    QLineEdit& Text() { return Find<QLineEdit>("txtFind"); }
    QCheckBox& Match() { return Find<QCheckBox>("chkMatch"); }
    QPushButton& Button(const char* name) { return Find<QPushButton>(name); }
    void Click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Form().focusWidget(), key, modifiers);
    }
    void CheckMatch() { QTest::mouseClick(&Match(), Qt::LeftButton, {}, QPoint(8, Match().height() / 2)); }

    LogQuery Query;

private:
    std::unique_ptr<frmActivityFind> Form_;
};

TEST_F(frmActivityFindTest, AsksWhatToFind) {
    EXPECT_EQ(Form().windowTitle(), "Find");
    EXPECT_EQ(Find<QLabel>("Label1").text(), "Fi&nd What:");
    EXPECT_EQ(Match().text(), "Match &Case");
    EXPECT_EQ(Button("cmdFind").text(), "&Find");
    EXPECT_EQ(Button("cmdCancel").text(), "&Cancel");
    EXPECT_TRUE(Form().isModal());
    EXPECT_EQ(Form().focusWidget(), &Text());
}

TEST_F(frmActivityFindTest, OffersFindWhileThereIsAText) {
    EXPECT_FALSE(Button("cmdFind").isEnabled());
    QTest::keyClicks(&Text(), " ");
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    Press(Qt::Key_Backspace);
    EXPECT_FALSE(Button("cmdFind").isEnabled());
}

TEST_F(frmActivityFindTest, SelectsTheTextOfTheLastSearchForOvertyping) {
    Query.Text = "Flashed";
    Form();
    EXPECT_EQ(Text().selectedText(), "Flashed");
    EXPECT_TRUE(Button("cmdFind").isEnabled());
    QTest::keyClicks(&Text(), "S");
    EXPECT_EQ(Text().text(), "S");
}

TEST_F(frmActivityFindTest, ShowsWhetherCaseMatteredLastTime) {
    Query.MatchCase = true;
    EXPECT_TRUE(Match().isChecked());
}

TEST_F(frmActivityFindTest, GivesTextAndMatchCaseOnFind) {
    QTest::keyClicks(&Text(), " Flashed & <b> ");
    CheckMatch();
    EXPECT_EQ(Query.Text, "") << "nothing before Find";
    Click(Button("cmdFind"));
    EXPECT_EQ(Query.Text, " Flashed & <b> ");
    EXPECT_TRUE(Query.MatchCase);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmActivityFindTest, TakesEnterForFind) {
    QTest::keyClicks(&Text(), "Flashed");
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
    CheckMatch();
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
    Form(&viewer);
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
        Form(&viewer);
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
    ASSERT_TRUE(QDir().mkpath(PICTURES));
    EXPECT_TRUE(Form().grab().save(PICTURES "/frmActivityFind.png"));
}

}  // namespace burnwick::test
