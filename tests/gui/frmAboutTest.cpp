#include "tools/frmAbout.h"

#include <QAccessible>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <vector>

#include "gui/Answers.h"
#include "gui/FormTest.h"
#include "tools/LinkLabel.h"
#include "tools/frmAboutOEM.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

Product SomeProduct() {
    return {.Title = "Burnwick",
            .Major = 2,
            .Minor = 8,
            .Revision = 1000,
            .Comments =
                "Writes firmware images into the flash memory of video units over an RS-232 line, and "
                "verifies them.",
            .LegalNotice = "Copyright © 2026 The Burnwick authors",
            .WebSite = "https://www.burnwick.example/"};
}

}  // namespace

class frmAboutTest : public FormTest {
protected:
    frmAboutTest() { QApplication::setWindowIcon(QIcon(PROGRAM_ICON)); }

    std::unique_ptr<QDialog> New() override {
        auto form = std::make_unique<frmAbout>(About, [this](const std::string& link) {
            Opened.push_back(link);
            return HasBrowser;
        });
        User.LeaveAlone(*form);
        return form;
    }

    LinkLabel& Link() { return Find<LinkLabel>("lblWebSite"); }
    QAccessibleActionInterface* Actions() {
        return QAccessible::queryAccessibleInterface(&Link())->actionInterface();
    }

    Product About = SomeProduct();
    std::vector<std::string> Opened;
    bool HasBrowser = true;
    Answers User;
};

TEST_F(frmAboutTest, TellsTheVersion) {
    EXPECT_EQ(Form().windowTitle(), "About Burnwick");
    EXPECT_TRUE(Form().isModal());
    EXPECT_EQ(Text("lblTitle"), "Burnwick");
    EXPECT_EQ(Text("lblVersion"), "Version 2.08 (Build 2.08.1000)");
}

TEST_F(frmAboutTest, TellsWhatTheProductSaysOfItself) {
    EXPECT_EQ(Text("lblComments"), About.Comments);
    EXPECT_EQ(Text("lblCopyright"), About.LegalNotice);
    EXPECT_EQ(Text("lblWebSite"), "https://www.burnwick.example/");
}

TEST_F(frmAboutTest, ShowsTextsAsTheyStand) {
    About.Comments = "<b>R&D</b> & more";
    EXPECT_EQ(Find<QLabel>("lblComments").textFormat(), Qt::PlainText);
    EXPECT_EQ(Text("lblComments"), "<b>R&D</b> & more");
}

TEST_F(frmAboutTest, OpensTheWebSiteByAClick) {
    QTest::mouseClick(&Link(), Qt::LeftButton);
    EXPECT_THAT(Opened, ElementsAre("https://www.burnwick.example/"));
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmAboutTest, OpensTheWebSiteByAKey) {
    Form();
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), "lblWebSite");
    Press(Qt::Key_Space);
    Press(Qt::Key_Return);
    EXPECT_EQ(Opened.size(), 2U);
}

TEST_F(frmAboutTest, ShowsTheWebSiteToScreenReadersAsALink) {
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&Link());
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Link);
    EXPECT_TRUE(seen->state().linked);
    EXPECT_TRUE(seen->state().focusable);
    EXPECT_EQ(seen->text(QAccessible::Name), "lblWebSite");
    EXPECT_EQ(seen->text(QAccessible::Description), "https://www.burnwick.example/");
}

TEST_F(frmAboutTest, OpensTheWebSiteForAScreenReader) {
    QAccessibleActionInterface* const actions = Actions();
    ASSERT_NE(actions, nullptr);
    ASSERT_EQ(actions->actionNames().value(0), QAccessibleActionInterface::pressAction());
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Opened.empty(); }));
    EXPECT_THAT(Opened, ElementsAre("https://www.burnwick.example/"));
}

TEST_F(frmAboutTest, GivesTheLinkTheFocusForAScreenReader) {
    ASSERT_NE(Actions(), nullptr);
    Actions()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(Focus(), "lblWebSite");
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(frmAboutTest, OffersAScreenReaderNoLinkThatIsDisabled) {
    Link().setEnabled(false);
    ASSERT_NE(Actions(), nullptr);
    EXPECT_FALSE(Actions()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    Actions()->doAction(QAccessibleActionInterface::pressAction());
    QApplication::processEvents();
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(frmAboutTest, TellsItsCaptionAndItsIconToScreenReaders) {
    EXPECT_EQ(Form().accessibleDescription(), "About Burnwick");
    EXPECT_EQ(Find("lblIcon").accessibleDescription(), "Program icon");
}

TEST_F(frmAboutTest, LeavesTheWebSiteOnAPressThatIsLetGoElsewhere) {
    QTest::mousePress(&Link(), Qt::LeftButton);
    QTest::mouseRelease(&Link(), Qt::LeftButton, {}, QPoint(-5, -5));
    QTest::mouseClick(&Link(), Qt::RightButton);
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(frmAboutTest, TellsThatThereIsNoBrowser) {
    HasBrowser = false;
    User.ClickInBox(QMessageBox::Ok);
    QTest::mouseClick(&Link(), Qt::LeftButton);
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_THAT(User.Boxes()[0].Text, HasSubstr("https://www.burnwick.example/ could not be opened"));
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmAboutTest, OpensNoAddressOfAnotherKind) {
    About.WebSite = "file:///bin/sh";
    User.ClickInBox(QMessageBox::Ok);
    QTest::mouseClick(&Link(), Qt::LeftButton);
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(frmAboutTest, GivesTheAddressTheLookOfALinkUnderThePointer) {
    Form();
    EXPECT_FALSE(Link().font().underline());
    EXPECT_EQ(Link().cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseMove(&Link());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Link().font().underline(); }));
    EXPECT_EQ(Link().foregroundRole(), QPalette::Link);
    QTest::mouseMove(&Form(), QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Link().font().underline(); }));
    EXPECT_NE(Link().foregroundRole(), QPalette::Link);
}

TEST_F(frmAboutTest, IsLeftWithOK) {
    Click("cmdOK");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmAboutTest, IsLeftWithEnter) {
    Form();
    EXPECT_EQ(Focus(), "cmdOK");
    Press(Qt::Key_Return);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmAboutTest, IsLeftWithEscape) {
    Form();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmAboutTest, StandsInTheMiddleOfTheScreen) {
    EXPECT_TRUE(StandsInTheMiddle());
}

TEST_F(frmAboutTest, HasItsPictureTaken) {
    TakePicture("frmAbout");
}

class frmAboutOEMTest : public FormTest {
protected:
    frmAboutOEMTest() { QApplication::setWindowIcon(QIcon(PROGRAM_ICON)); }

    std::unique_ptr<QDialog> New() override { return std::make_unique<frmAboutOEM>(SomeProduct()); }
};

TEST_F(frmAboutOEMTest, TellsTheVersionAndNoWebSite) {
    EXPECT_EQ(Form().windowTitle(), "About Burnwick (OEM)");
    EXPECT_TRUE(Form().isModal());
    EXPECT_EQ(Text("lblVersion"), "Version 2.08 (Build 2.08.1000)");
    EXPECT_EQ(Form().findChild<QWidget*>("lblWebSite"), nullptr);
}

TEST_F(frmAboutOEMTest, IsLeftWithOK) {
    Click("cmdOK");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmAboutOEMTest, StandsInTheMiddleOfTheScreen) {
    EXPECT_TRUE(StandsInTheMiddle());
}

TEST_F(frmAboutOEMTest, HasItsPictureTaken) {
    TakePicture("frmAboutOEM");
}

}  // namespace burnwick::test
