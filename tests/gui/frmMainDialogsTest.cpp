// The commands that only open other dialogs, as the main window opens them.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <fstream>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

}  // namespace

class frmMainDialogs : public WindowTest {
protected:
    void ShipHelp() {
        HelpFile = Folder.Path() / "Burnwick.hlp";
        std::ofstream(HelpFile) << "<h1>Burnwick Help</h1>";
    }
    static QWidget* HelpWindow(const char* title) {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->windowTitle() == title && window->isVisible()) {
                return window;
            }
        }
        return nullptr;
    }
};

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
    ConnectUnitOfSize(ImageSize);
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
    EXPECT_THAT(Stored, ElementsAre("Options/ContextMenu=Yes", "Options/Verify=0"));
    EXPECT_THAT(Calls, Contains("register /opt/burnwick/Burnwick"));
}

TEST_F(frmMainDialogs, HelpThatIsNotThereIsToldAndOpensNothing) {
    Start();
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuHelpBurnwickHelp");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes()[0].Text, "The Burnwick help file does not exist.    ");
    EXPECT_EQ(User.Boxes()[0].Icon, QMessageBox::Critical);
    EXPECT_EQ(HelpWindow("Burnwick Help"), nullptr);
}

TEST_F(frmMainDialogs, HelpStandsBesideTheWindowAndEndsWithIt) {
    ShipHelp();
    Start();
    Trigger("mnuHelpBurnwickHelp");
    const QPointer<QWidget> help = HelpWindow("Burnwick Help");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(Window->isEnabled());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    Click("cmdQuit");
    EXPECT_TRUE(QTest::qWaitFor([&help] { return help == nullptr; }));
}

TEST_F(frmMainDialogs, HelpComesWithF1WhereverTheFocusIs) {
    ShipHelp();
    Start();
    QApplication::setActiveWindow(Window.get());
    Find("txtDisplay")->setFocus();
    QTest::keyClick(Window->focusWidget(), Qt::Key_F1);
    EXPECT_NE(HelpWindow("Burnwick Help"), nullptr);
}

TEST_F(frmMainDialogs, HelpStaysOpenDuringARun) {
    ShipHelp();
    ConnectUnitOfSize(ImageSize);
    Start();
    Trigger("mnuHelpBurnwickHelp");
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_NE(HelpWindow("Burnwick Help"), nullptr);
}

TEST_F(frmMainDialogs, HelpHasAnotherTitleInAFolderOfAnEquipmentMaker) {
    ProgramFolder = "OEM Tools";
    ShipHelp();
    Start();
    Trigger("mnuHelpBurnwickHelp");
    EXPECT_NE(HelpWindow("Burnwick (OEM) Help"), nullptr);
    EXPECT_EQ(HelpWindow("Burnwick Help"), nullptr);
}

TEST_F(frmMainDialogs, HelpHandsItsLinksToTheDesktop) {
    ShipHelp();
    Start();
    Trigger("mnuHelpBurnwickHelp");
    auto* const page = HelpWindow("Burnwick Help")->findChild<QTextBrowser*>("txtPage");
    Q_EMIT page->anchorClicked(QUrl("https://www.burnwick.example/help"));
    Q_EMIT page->anchorClicked(QUrl("file:///bin/sh"));
    EXPECT_THAT(Calls, Contains("open https://www.burnwick.example/help"));
    EXPECT_THAT(Calls, Not(Contains(HasSubstr("/bin/sh"))));
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

TEST_F(frmMainDialogs, AboutIsAnotherOneForAProgramThatIsInstalledInSuchAFolder) {
    Executable = "/opt/OEM/Tools/Burnwick";
    Start();
    User.Escape();
    Trigger("mnuHelpAbout");
    EXPECT_THAT(User.Dialogs(), ElementsAre("About Burnwick (OEM)"));
}

TEST_F(frmMainDialogs, AboutIsTheUsualOneInAFolderOfSmallLetters) {
    Executable = "/opt/oem/tools/Burnwick";
    ProgramFolder = "oem tools";
    Start();
    User.Escape();
    Trigger("mnuHelpAbout");
    EXPECT_THAT(User.Dialogs(), ElementsAre("About Burnwick"));
}

}  // namespace burnwick::test
