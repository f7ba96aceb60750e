// The port dialog's list: its keys, its tips, and ports that come and go.
#include <QWheelEvent>

#include "gui/frmCOMPortSettingTest.h"

namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(frmCOMPortSettingTest, SelectsTheNextPortByTheDownKey) {
    Press(Qt::Key_Down);
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
    EXPECT_TRUE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, SelectsThePreviousPortByTheUpKey) {
    Press(Qt::Key_Down);
    Press(Qt::Key_Up);
    EXPECT_EQ(Selected(), "Communications Port (COM1)");
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, StaysAtEitherEndOfTheList) {
    Press(Qt::Key_Up);
    EXPECT_EQ(Selected(), "Communications Port (COM1)");
    for (int times = 0; times < 5; ++times) {
        Press(Qt::Key_Down);
    }
    EXPECT_EQ(Selected(), "Communications Port (COM16)");
    EXPECT_TRUE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, LooksAtThePortAloneAfterAnArrowKey) {
    Click(Option(0));
    List().setFocus();
    Press(Qt::Key_Up);
    EXPECT_FALSE(OK().isEnabled());
}

TEST_F(frmCOMPortSettingTest, TakesEnterInTheListForOKWithAnotherPort) {
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Settings["COMPort/COM"], "6");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmCOMPortSettingTest, TakesEnterInTheListForNothingWithTheSavedPort) {
    Click(Option(0));
    List().setFocus();
    Press(Qt::Key_Enter);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_THAT(Calls, IsEmpty());
}

TEST_F(frmCOMPortSettingTest, TakesEnterForOKAtASpeed) {
    Click(Option(0));
    Option(0).setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(Settings["COMPort/BaudRate"], "0");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(frmCOMPortSettingTest, TakesEscapeForCancel) {
    for (QWidget* const control : std::vector<QWidget*>{&List(), &Option(1), &OK()}) {
        Form().show();
        Choose(1);
        control->setFocus();
        Press(Qt::Key_Escape);
        EXPECT_FALSE(Form().isVisible()) << control->objectName().toStdString();
    }
    EXPECT_THAT(Calls, IsEmpty());
}

TEST_F(frmCOMPortSettingTest, LeavesAKeyAloneThatWentDownElsewhere) {
    Press(Qt::Key_Down);
    QTest::keyRelease(&List(), Qt::Key_Return);
    QTest::keyRelease(&List(), Qt::Key_Escape);
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(frmCOMPortSettingTest, OnlySelectsByEnterInTheDroppedList) {
    DropDown();
    QTest::keyClick(List().view(), Qt::Key_Down);
    QTest::keyPress(List().view(), Qt::Key_Return);
    QTest::keyRelease(&List(), Qt::Key_Return);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
}

TEST_F(frmCOMPortSettingTest, OnlyClosesTheDroppedListByEscape) {
    DropDown();
    QTest::keyPress(List().view(), Qt::Key_Escape);
    QTest::keyRelease(&List(), Qt::Key_Escape);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_FALSE(List().view()->isVisible());
}

TEST_F(frmCOMPortSettingTest, LetsNobodyTypeIntoTheLockedList) {
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_End, Qt::Key_PageDown}) {
        Press(key);
        EXPECT_EQ(Selected(), "Communications Port (COM1)") << key;
    }
    QWheelEvent wheel(QPointF(5, 5), List().mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&List(), &wheel);
    EXPECT_EQ(Selected(), "Communications Port (COM1)");
}

TEST_F(frmCOMPortSettingTest, UnlocksTheListWhenItIsDroppedDownUntilAnEntryIsClicked) {
    DropDown();
    EXPECT_FALSE(List().Locked());
    List().hidePopup();
    Choose(0);
    EXPECT_TRUE(List().Locked());
}

TEST_F(frmCOMPortSettingTest, TellsDeviceAndAdapterInATip) {
    EXPECT_EQ(Tip(0), SystemDeviceOf(1) + "\nSerial port");
    EXPECT_THAT(Tip(1), HasSubstr(SystemDeviceOf(6) + "\n"));
}

TEST_F(frmCOMPortSettingTest, ListsAPortThatHasAppearedWhenTheListIsDroppedDown) {
    Form();
    There.insert(SystemDeviceOf(5));
    There.insert(SystemDeviceOf(7));
    DropDown();
    EXPECT_THAT(Listed(), ElementsAre("Communications Port (COM1)", "Communications Port (COM5)",
                                      "Communications Port (COM6)", "Communications Port (COM7)",
                                      "Communications Port (COM16)"));
}

TEST_F(frmCOMPortSettingTest, KeepsSelectionAndOKWhenAPortAppears) {
    There = {SystemDeviceOf(6)};
    Control.SetCommPort(6);
    Click(Option(0));
    There.insert(SystemDeviceOf(1));
    DropDown();
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
    EXPECT_EQ(List().currentIndex(), 1);
    EXPECT_TRUE(OK().isEnabled());
    EXPECT_EQ(FrameCaption(), "Available COM Ports:");
}

TEST_F(frmCOMPortSettingTest, KeepsAPortInTheListThatHasVanished) {
    Choose(1);
    There.clear();
    DropDown();
    EXPECT_EQ(List().count(), 3);
    EXPECT_EQ(Selected(), "Communications Port (COM6)");
}

}  // namespace burnwick::test
