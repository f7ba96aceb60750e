// The commands that only open other dialogs, as the main window opens them.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

}  // namespace

class frmMainDialogs : public WindowTest {};

TEST_F(frmMainDialogs, AComparisonTellsOfTwoImages) {
    Start();
    User.Next([this](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("txtFile1")->setText(QString::fromStdString(Image("one.bin")));
        dialog.findChild<QLineEdit*>("txtFile2")->setText(QString::fromStdString(Image("two.bin")));
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCompare"), Qt::LeftButton);
        EXPECT_EQ(dialog.findChild<QLabel*>("lblStatus")->text(), "Status: File 1 and File 2 are identical.");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Trigger("mnuFileCompareFiles");
    EXPECT_THAT(User.Dialogs(), ElementsAre("File Compare"));
    EXPECT_EQ(Beeps, 1);
}

TEST_F(frmMainDialogs, TheLogTellsOfTheLastRun) {
    ConnectUnitOfSize(262'144);
    Start();
    Download(Image());
    User.Next([this](QDialog& dialog) {
        const QString shown = dialog.findChild<QPlainTextEdit*>("txtLog")->toPlainText();
        EXPECT_THAT(shown.toStdString(), HasSubstr(Image() + "\nFlashed: "));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Trigger("mnuToolViewLog");
    EXPECT_THAT(User.Dialogs(), Contains("Activity Log"));
}

TEST_F(frmMainDialogs, TheLogIsEmptyBeforeTheFirstRun) {
    Start();
    User.Next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QPlainTextEdit*>("txtLog")->toPlainText(), "The Activity log is empty.");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Trigger("mnuToolViewLog");
}

TEST_F(frmMainDialogs, OptionsAreStoredAndReachTheDesktop) {
    Start();
    Stored.clear();
    User.Next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Options");
        auto* const box = dialog.findChild<QCheckBox*>("chkFlashMenu");
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    });
    Trigger("mnuToolOptions");
    EXPECT_THAT(Stored, ElementsAre("Options/ContextMenu=Yes", "Options/Desktop=No", "Options/LogOption=&All",
                                    "Options/Verify=0"));
    EXPECT_THAT(Calls, Contains("register /opt/burnwick/Burnwick"));
}

TEST_F(frmMainDialogs, AboutTellsTheVersionAndOpensTheWebSite) {
    Start();
    User.Next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>("lblVersion")->text(), "Version 2.08 (Build 2.08.1000)");
        QTest::mouseClick(dialog.findChild<QWidget*>("lblWebSite"), Qt::LeftButton);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Trigger("mnuHelpAbout");
    EXPECT_THAT(User.Dialogs(), ElementsAre("About Burnwick"));
    EXPECT_THAT(Calls, Contains("open https://www.burnwick.example/"));
}

TEST_F(frmMainDialogs, AboutIsAnotherOneInAFolderOfAnEquipmentMaker) {
    ProgramFolder = "OEM Tools";
    Start();
    User.Escape();
    Trigger("mnuHelpAbout");
    EXPECT_THAT(User.Dialogs(), ElementsAre("About Burnwick (OEM)"));
}

TEST_F(frmMainDialogs, AboutIsTheUsualOneInAFolderOfSmallLetters) {
    ProgramFolder = "oem tools";
    Start();
    User.Escape();
    Trigger("mnuHelpAbout");
    EXPECT_THAT(User.Dialogs(), ElementsAre("About Burnwick"));
}

}  // namespace burnwick::test
