// What the port dialog shows, confirms and stores.
#include "gui/frmCOMPortSettingTest.h"

#include <QDir>
#include <QScreen>

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(frmCOMPortSettingTest, AsksForPortAndSpeed) {
    EXPECT_EQ(Form().windowTitle(), "COM Port Settings");
    EXPECT_EQ(Find<QLabel>("lblBaudRate").text(), "Baud Rate:");
    EXPECT_EQ(Option(0).text(), "57600");
    EXPECT_EQ(Option(1).text(), "115200");
    EXPECT_EQ(OK().text(), "OK");
    EXPECT_EQ(Cancel().text(), "Cancel");
    EXPECT_TRUE(Form().isModal());
}

TEST_F(frmCOMPortSettingTest, ListsThePortsThatOpen) {
    EXPECT_THAT(Listed(), ElementsAre("Communications Port (COM1)", "Communications Port (COM6)",
                                      "Communications Port (COM16)"));
    EXPECT_EQ(FrameCaption(), "Available COM Ports:");
}

TEST_F(frmCOMPortSettingTest, SelectsTheSavedPortAndHasNothingToConfirm) {
    Control.SetCommPort(6);
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
    EXPECT_FALSE(OK().isEnabled());
    EXPECT_TRUE(List().Locked());
}

TEST_F(frmCOMPortSettingTest, SelectsTheFirstPortWhenTheSavedOneOpensNoMore) {
    Control.SetCommPort(3);
    EXPECT_EQ(Selected(), "Communications Port (COM1)");
    EXPECT_TRUE(OK().isEnabled());
    EXPECT_EQ(Control.CommPort(), 3);
}

TEST_F(frmCOMPortSettingTest, HasACaptionForOnePort) {
    There = {SystemDeviceOf(1)};
    EXPECT_EQ(FrameCaption(), "Available COM Port:");
}

TEST_F(frmCOMPortSettingTest, HasNothingToOfferWithoutAPort) {
    There.clear();
    EXPECT_THAT(Listed(), ElementsAre("No COM Port Available"));
    EXPECT_EQ(FrameCaption(), "Available COM Port:");
    EXPECT_FALSE(List().isEnabled());
    EXPECT_FALSE(OK().isEnabled());
    Click(Option(0));
    EXPECT_FALSE(OK().isEnabled()) << "a speed alone is nothing without a port";
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(Control.CommPort(), 1);
}

TEST_F(frmCOMPortSettingTest, LeavesTheControlClosed) {
    Control.SetPortOpen(true);
    Form();
    EXPECT_FALSE(Control.PortOpen());
    EXPECT_FALSE(Device.IsOpen());
}

TEST_F(frmCOMPortSettingTest, SelectsTheStoredSpeed) {
    EXPECT_TRUE(Option(1).isChecked());
    EXPECT_FALSE(Option(0).isChecked());
}

TEST_F(frmCOMPortSettingTest, TakesAnyNonsenseThatIsStoredFor57600) {
    const std::string nines(240, '9');
    const std::vector<std::string> nonsense{"", "2", "x", "\t&%n\xFF" + nines, nines};
    for (const std::string& stored : nonsense) {
        frmCOMPortSetting form({Control, Devices, stored, nullptr, nullptr, nullptr});
        EXPECT_TRUE(form.findChild<QRadioButton*>("optBaudRate_0")->isChecked()) << stored;
        EXPECT_FALSE(form.findChild<QPushButton*>("cmdOK")->isEnabled()) << stored;
    }
}

TEST_F(frmCOMPortSettingTest, CanReplaceNonsenseByASpeed) {
    Settings["COMPort/BaudRate"] = "7";
    Click(Option(1));
    EXPECT_TRUE(OK().isEnabled());
    Click(Option(0));
    EXPECT_TRUE(OK().isEnabled());
    Click(OK());
    EXPECT_EQ(Settings["COMPort/BaudRate"], "0");
}

TEST_F(frmCOMPortSettingTest, EnablesOKForAnotherPortAlone) {
    Choose(1);
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
    EXPECT_TRUE(OK().isEnabled());
    Choose(0);
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, EnablesOKForAnotherSpeedAlone) {
    Click(Option(0));
    EXPECT_TRUE(OK().isEnabled());
    Click(Option(1));
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, DisablesOKForTheStoredSpeedEvenWithAnotherPort) {
    Choose(1);
    Click(Option(0));
    Click(Option(1));
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, DisablesOKForTheSavedPortEvenWithAnotherSpeed) {
    Click(Option(0));
    Choose(0);
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, KeepsOKForASpeedThatIsClickedAgain) {
    Choose(1);
    Click(Option(1));
    EXPECT_TRUE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, StoresAnotherPort) {
    Choose(2);
    Click(OK());
    EXPECT_THAT(Calls, ElementsAre("store COM16 1", "show COM16 115200"));
    EXPECT_EQ(Control.CommPort(), 16);
    EXPECT_FALSE(Control.PortOpen());
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(Form().result(), QDialog::Accepted);
}

TEST_F(frmCOMPortSettingTest, StoresBothKeysAndLogsAnotherSpeed) {
    Click(Option(0));
    Click(OK());
    EXPECT_THAT(Calls, ElementsAre("store COM1 0", "show COM1 57600", "log 57600"));
}

TEST_F(frmCOMPortSettingTest, LogsTheFasterSpeed) {
    Settings["COMPort/BaudRate"] = "0";
    Click(Option(1));
    Click(OK());
    EXPECT_THAT(Calls, ElementsAre("store COM1 1", "show COM1 115200", "log 115200"));
}

TEST_F(frmCOMPortSettingTest, TestsAnotherPortAndNoOther) {
    Choose(1);
    Device.Tried.clear();
    Click(OK());
    EXPECT_THAT(Device.Tried, ElementsAre(SystemDeviceOf(6)));
}

TEST_F(frmCOMPortSettingTest, DoesNotTestThePortItHas) {
    Click(Option(0));
    Device.Tried.clear();
    Click(OK());
    EXPECT_THAT(Device.Tried, IsEmpty());
}

TEST_F(frmCOMPortSettingTest, TellsAPortThatOpensNoMoreAndStays) {
    Choose(1);
    There.erase(SystemDeviceOf(6));
    AwaitBox();
    Click(OK());
    EXPECT_EQ(Box.Caption, "CommPort Error");
    EXPECT_EQ(Box.Text, "COM6 is not available. " + SystemDeviceOf(6)
                            + ": no such device.    \nPlease try to select another CommPort.");
    EXPECT_TRUE(Form().isVisible());
    EXPECT_THAT(Calls, IsEmpty());
    EXPECT_EQ(Control.CommPort(), 1);
    EXPECT_FALSE(Control.PortOpen());
}

TEST_F(frmCOMPortSettingTest, TakesAPortThatOpensAgain) {
    Choose(1);
    There.erase(SystemDeviceOf(6));
    AwaitBox();
    Click(OK());
    There.insert(SystemDeviceOf(6));
    Click(OK());
    EXPECT_EQ(Settings["COMPort/COM"], "6");
    EXPECT_EQ(Control.CommPort(), 6);
}

TEST_F(frmCOMPortSettingTest, ChangesNothingOnCancel) {
    Choose(1);
    Click(Option(0));
    Click(Cancel());
    EXPECT_THAT(Calls, IsEmpty());
    EXPECT_EQ(Control.CommPort(), 1);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmCOMPortSettingTest, ChangesNothingWhenItIsClosed) {
    Choose(1);
    Form().close();
    EXPECT_THAT(Calls, IsEmpty());
    EXPECT_EQ(Control.CommPort(), 1);
}

TEST_F(frmCOMPortSettingTest, IsWalkedThroughWithTheTabKey) {
    EXPECT_EQ(Form().focusWidget(), &List());
    Press(Qt::Key_Down);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &Option(1)) << "one stop for both speeds";
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &OK());
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &Cancel());
    Press(Qt::Key_Tab);
    EXPECT_EQ(Form().focusWidget(), &List());
}

TEST_F(frmCOMPortSettingTest, CallsItsControlsByTheirNames) {
    for (const char* name : {"Frame1", "cboPort", "optBaudRate_0", "optBaudRate_1", "cmdOK", "cmdCancel"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleName(), name);
    }
}

TEST_F(frmCOMPortSettingTest, TellsScreenReadersTheCaptionOfTheList) {
    EXPECT_EQ(Find<QWidget>("Frame1").accessibleDescription().toStdString(), FrameCaption());
    EXPECT_THAT(FrameCaption(), ::testing::StartsWith("Available COM Ports"));
}

TEST_F(frmCOMPortSettingTest, StandsBelowTheTopOfTheMainWindow) {
    QWidget mainWindow;
    mainWindow.setGeometry(30, 40, 300, 200);
    mainWindow.show();
    Parent = &mainWindow;
    Form();
    const int below = Form().frameGeometry().top() - mainWindow.frameGeometry().top();
    EXPECT_EQ(below, 1000 * mainWindow.logicalDpiY() / 1440);
    const int away =
        Form().frameGeometry().center().x() - mainWindow.screen()->availableGeometry().center().x();
    EXPECT_LE(std::abs(away), 1);
    Form().setParent(nullptr);
}

TEST_F(frmCOMPortSettingTest, StandsOnTheScreenWhenTheMainWindowDoesNot) {
    QWidget mainWindow;
    mainWindow.setGeometry(0, mainWindow.screen()->availableGeometry().bottom() - 20, 300, 200);
    mainWindow.show();
    Parent = &mainWindow;
    Form();
    EXPECT_LE(Form().frameGeometry().bottom(), mainWindow.screen()->availableGeometry().bottom());
    Form().setParent(nullptr);
}

TEST_F(frmCOMPortSettingTest, CannotBeResized) {
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
    EXPECT_EQ(Form().size(), Form().sizeHint());
}

TEST_F(frmCOMPortSettingTest, HasItsPictureTaken) {
    TakePicture("frmCOMPortSetting");
}

TEST_F(frmCOMPortSettingTest, HasItsPictureTakenWithoutAPort) {
    There.clear();
    TakePicture("frmCOMPortSetting-none");
}

}  // namespace burnwick::test
