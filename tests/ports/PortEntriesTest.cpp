#include "ports/PortEntries.h"

#include <gmock/gmock.h>

#include <limits>

namespace burnwick::test {

namespace {

using ::testing::ElementsAre;
using ::testing::Field;

const FoundPort Com3{3, "/dev/ttyS2", "Serial port", true, ""};
const FoundPort Com12{12, "/dev/ttyUSB7", "FTDI FT232R", true, ""};
const FoundPort Locked{5, "/dev/ttyUSB0", "FTDI FT232R", false, "/dev/ttyUSB0: permission denied"};

}  // namespace

TEST(PortEntries, HaveTheNamesOfPorts) {
    EXPECT_THAT(EntriesOf({Com3, Com12}, 1).Entries,
                ElementsAre(Field(&PortEntry::Text, "Communications Port (COM3)"),
                            Field(&PortEntry::Text, "Communications Port (COM12)")));
}

TEST(PortEntries, TellTheDeviceAndItsAdapterInATip) {
    EXPECT_EQ(EntriesOf({Com12}, 1).Entries.front().ToolTip, "/dev/ttyUSB7\nFTDI FT232R");
}

TEST(PortEntries, SelectTheRememberedPort) {
    EXPECT_EQ(EntriesOf({Com3, Com12}, 12).Selected, 1U);
}

TEST(PortEntries, SelectTheFirstPortWhenTheRememberedOneIsNotThere) {
    EXPECT_EQ(EntriesOf({Com3, Com12}, 1).Selected, 0U);
}

TEST(PortEntries, SelectTheFirstPortWhenTheRememberedOneCannotBeUsed) {
    EXPECT_EQ(EntriesOf({Com3, Locked, Com12}, 5).Selected, 0U);
}

TEST(PortEntries, SayThatThereIsNoPort) {
    const PortEntries none = EntriesOf({}, 1);
    EXPECT_THAT(none.Entries, ElementsAre(Field(&PortEntry::Text, "No COM Port Available")));
    EXPECT_EQ(none.Selected, 0U);
    EXPECT_EQ(none.ToolTip, "");
}

TEST(PortEntries, LeaveOutAPortThatCannotBeUsed) {
    EXPECT_THAT(EntriesOf({Com3, Locked}, 1).Entries, ElementsAre(Field(&PortEntry::Number, 3)));
    EXPECT_EQ(EntriesOf({Com3, Locked}, 1).ToolTip, "");
}

TEST(PortEntries, TellWhyEachPortCannotBeUsedWhenNoneCan) {
    FoundPort busy = Com12;
    busy.Usable = false;
    busy.Trouble = "/dev/ttyUSB7 is in use";
    EXPECT_EQ(EntriesOf({Locked, busy}, 1).ToolTip,
              "COM5: /dev/ttyUSB0: permission denied\nCOM12: /dev/ttyUSB7 is in use");
}

TEST(PortEntries, TellTheirNumberOfOneOrTwoDigits) {
    EXPECT_EQ(SelectedPort("Communications Port (COM3)"), 3);
    EXPECT_EQ(SelectedPort("Communications Port (COM12)"), 12);
    for (int port = 1; port <= 16; ++port) {
        EXPECT_EQ(SelectedPort(EntriesOf({{port, "", "", true, ""}}, 1).Entries.front().Text), port);
    }
}

TEST(PortEntries, TellNoNumberInAnyOtherText) {
    for (const char* text : {"", "No Port Available", "No COM Port Available", "Communications", "COM",
                             "COM)", "COM-1", "COM+3", "COM 3", "(COMx)", "\xFF"}) {
        EXPECT_EQ(SelectedPort(text), 0) << text;
    }
}

TEST(PortEntries, StandUnderACaptionThatTellsTheirNumber) {
    EXPECT_EQ(PortsCaption(1), "Available COM Port:");
    EXPECT_EQ(PortsCaption(2), "Available COM Ports:");
    EXPECT_EQ(PortsCaption(16), "Available COM Ports:");
}

TEST(StoredBaudRate, SelectsAnOptionByItsFirstCharacter) {
    EXPECT_EQ(BaudOptionOf("0"), 0);
    EXPECT_EQ(BaudOptionOf("1"), 1);
    EXPECT_EQ(BaudOptionOf("115200"), 1);
    for (const char* text : {"", "2", "9", "57600", "x", " 1", "-1", "+1", "\xFF", "&All"}) {
        EXPECT_EQ(BaudOptionOf(text), 0) << text;
    }
}

TEST(StoredBaudRate, IsComparedByItsNumber) {
    EXPECT_EQ(BaudIndexOf("0"), 0);
    EXPECT_EQ(BaudIndexOf("1"), 1);
    EXPECT_EQ(BaudIndexOf("12"), 12);
    EXPECT_EQ(BaudIndexOf(" 1x"), 1);
    EXPECT_EQ(BaudIndexOf("-1"), -1);
    EXPECT_EQ(BaudIndexOf(std::string(240, '9')), std::numeric_limits<int>::max());
    for (const char* text : {"", " ", "x", "-", "\xFF", "&All"}) {
        EXPECT_EQ(BaudIndexOf(text), 0) << text;
    }
}

TEST(PortRefusedBox, NamesThePortAndTheReason) {
    const BoxText box = PortRefusedBox(12, "Device unavailable");
    EXPECT_EQ(box.Caption, "CommPort Error");
    EXPECT_EQ(box.Text,
              "COM12 is not available. Device unavailable.    \nPlease try to select another CommPort.");
}

}  // namespace burnwick::test
