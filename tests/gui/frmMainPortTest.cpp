// The port dialog, as the main window opens it.
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "gui/WindowTest.h"
#include "platform/serial/SystemPorts.h"

namespace burnwick::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

}  // namespace

// Every port opens, COM1 is chosen, at 115200 bit/s.
class frmMainPort : public WindowTest {
protected:
    // Behind the menu command.
    void ChooseOther() {
        User.Next([](QDialog& dialog) {
            QTest::keyClick(dialog.findChild<QWidget*>("cboPort"), Qt::Key_Down);
            QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
    }
    void ChooseFirst() {
        User.Next([](QDialog& dialog) {
            QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
    }
    void ChooseSlower() {
        User.Next([](QDialog& dialog) {
            QTest::mouseClick(dialog.findChild<QWidget*>("optBaudRate_0"), Qt::LeftButton, {}, QPoint(8, 8));
            QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
    }
    void FailToOpenThePort() {
        PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by another program"};
        Start();
        User.TypeFile(Image());
        User.ClickInBox(QMessageBox::Ok);
    }
};

TEST_F(frmMainPort, IsChosenBehindItsCommand) {
    Start();
    ChooseOther();
    Trigger("mnuToolCOMPortSetting");
    EXPECT_THAT(User.Dialogs(), ElementsAre("COM Port Settings"));
    EXPECT_EQ(Status(), "Ready on COM2 (115200bps).");
    EXPECT_EQ(Settings["COMPort/COM"], "2");
}

TEST_F(frmMainPort, ServesTheNextRun) {
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by another program"};
    TroubledDevice = SystemDeviceOf(1);
    ConnectUnitOfSize(ImageSize);
    Start();
    ChooseFirst();
    Trigger("mnuToolCOMPortSetting");
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainPort, AnotherSpeedIsShownStoredAndLoggedWhateverIsLogged) {
    Settings["Options/LogOption"] = "&Disable";
    Start();
    Folder.Write("home/Burnwick.log", AnyBytes(0));
    ChooseSlower();
    Trigger("mnuToolCOMPortSetting");
    EXPECT_EQ(Status(), "Ready on COM1 (57600bps).");
    EXPECT_EQ(Settings["COMPort/COM"], "1");
    EXPECT_EQ(Settings["COMPort/BaudRate"], "0");
    EXPECT_THAT(LogText(), HasSubstr("Changed: 115200bps to 57600bps."));
}

TEST_F(frmMainPort, AnotherSpeedBeginsNoLog) {
    Start();
    ChooseSlower();
    Trigger("mnuToolCOMPortSetting");
    EXPECT_THAT(LogText(), IsEmpty());
}

TEST_F(frmMainPort, CancelledLeavesAllAsItWas) {
    Start();
    User.Escape();
    Trigger("mnuToolCOMPortSetting");
    EXPECT_EQ(Status(), "Ready on COM1 (115200bps).");
}

TEST_F(frmMainPort, LeavesAStatusThatNamesNoPort) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    ChooseOther();
    Trigger("mnuToolCOMPortSetting");
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(Settings["COMPort/COM"], "2");
}

TEST_F(frmMainPort, IsAskedForWhenItDoesNotOpen) {
    FailToOpenThePort();
    User.Next([this](QDialog& dialog) {
        EXPECT_EQ(Display(), "CommPort is not available.\n");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Click("cmdDownload");
    EXPECT_THAT(User.Dialogs(), ElementsAre(StartsWith("Open"), "COM Port Settings"));
    EXPECT_EQ(Status(), "CommPort COM1 is not available.");
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainPort, ChosenThenMakesTheWindowReadyAgain) {
    TroubledDevice = SystemDeviceOf(1);
    FailToOpenThePort();
    ChooseFirst();
    Click("cmdDownload");
    EXPECT_EQ(Status(), "Ready on COM2 (115200bps).");
    EXPECT_TRUE(IsIdle());
}

}  // namespace burnwick::test
