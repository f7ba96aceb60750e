#include <gmock/gmock.h>

#include <map>
#include <set>

#include "platform/serial/SystemPorts.h"
#include "ports/modFindCOMPorts.h"
#include "support/SomePorts.h"

namespace burnwick::test {

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

}  // namespace

class FindCOMPorts : public ::testing::Test {
protected:
    FindCOMPorts()
        : Device(*new SomePorts(Loop, There)),  // owned by Control
          Control(Loop, std::unique_ptr<SerialDevice>(&Device),
                  [this](int port) { return DeviceOf(port, Devices); }) {}

    int StartupPort() {
        return modFindCOMPorts::ChooseStartupPort(Control, Stored,
                                                  [this](int port) { Stored = std::to_string(port); });
    }

    std::vector<std::string> Listed() {
        std::vector<std::string> texts;
        for (const auto& entry : modFindCOMPorts::FindCOMPorts(Control, Devices).Entries) {
            texts.push_back(entry.Text);
        }
        return texts;
    }

    std::string Stored;  // the number of the port
    std::map<int, std::string> Own;
    OwnDevices Devices = [this](int port) { return Own[port]; };
    VirtualLoop Loop;
    std::set<std::string> There;
    SomePorts& Device;
    MSComm Control;
};

TEST_F(FindCOMPorts, TriesCOM1ToCOM16InTheirOrder) {
    modFindCOMPorts::SurveyPorts(Control, Devices);
    ASSERT_THAT(Device.Tried, SizeIs(16));
    EXPECT_EQ(Device.Tried.front(), SystemDeviceOf(1));
    EXPECT_EQ(Device.Tried.back(), SystemDeviceOf(16));
}

TEST_F(FindCOMPorts, FindsThePortsThatOpen) {
    There = {SystemDeviceOf(6), SystemDeviceOf(16)};
    std::vector<int> usable;
    for (const auto& port : modFindCOMPorts::SurveyPorts(Control, Devices)) {
        if (port.Usable) {
            usable.push_back(port.Number);
        }
    }
    EXPECT_THAT(usable, ElementsAre(6, 16));
}

TEST_F(FindCOMPorts, LeavesTheControlClosedOnThePortItHad) {
    There = {SystemDeviceOf(6)};
    Control.SetCommPort(6);
    Control.SetPortOpen(true);
    modFindCOMPorts::SurveyPorts(Control, Devices);
    EXPECT_FALSE(Control.PortOpen());
    EXPECT_FALSE(Device.IsOpen());
    EXPECT_EQ(Control.CommPort(), 6);
}

TEST_F(FindCOMPorts, ListsThePortsThatOpenInAscendingOrder) {
    There = {SystemDeviceOf(16), SystemDeviceOf(3), SystemDeviceOf(6)};
    EXPECT_THAT(Listed(), ElementsAre("Communications Port (COM3)", "Communications Port (COM6)",
                                      "Communications Port (COM16)"));
}

TEST_F(FindCOMPorts, NeverListsAPortAboveCOM16) {
    Own[17] = "/dev/ttyUSB8";
    There = {"/dev/ttyUSB8", SystemDeviceOf(17)};
    EXPECT_THAT(Listed(), ElementsAre("No COM Port Available"));
}

TEST_F(FindCOMPorts, SelectsTheControlsPort) {
    There = {SystemDeviceOf(1), SystemDeviceOf(6), SystemDeviceOf(13)};
    Control.SetCommPort(6);
    EXPECT_EQ(modFindCOMPorts::FindCOMPorts(Control, Devices).Selected, 1U);
    EXPECT_EQ(Control.CommPort(), 6);
}

TEST_F(FindCOMPorts, TestsAPortByOpeningAndClosingIt) {
    There = {SystemDeviceOf(6)};
    EXPECT_FALSE(modFindCOMPorts::TestPort(Control, 6));
    EXPECT_EQ(Device.Opens(), 1);
    EXPECT_FALSE(Control.PortOpen());
}

TEST_F(FindCOMPorts, TellsWhyATestedPortDoesNotOpen) {
    EXPECT_EQ(modFindCOMPorts::TestPort(Control, 6)->Description, SystemDeviceOf(6) + ": no such device");
}

TEST_F(FindCOMPorts, TriesNoOtherPortForANumberThatDoesNotExist) {
    There = {SystemDeviceOf(1)};
    for (const int number : {-1, 0, 17, 255}) {
        EXPECT_EQ(modFindCOMPorts::TestPort(Control, number)->Number, CommErrorNumber::InvalidPortNumber);
    }
    EXPECT_THAT(Device.Tried, SizeIs(0));
}

TEST_F(FindCOMPorts, StartsOnThePortOfTheSettingsWithoutTryingIt) {
    Stored = "7";
    EXPECT_EQ(StartupPort(), 7);
    EXPECT_THAT(Device.Tried, SizeIs(0));
}

TEST_F(FindCOMPorts, KeepsTheControlsPortWhenTheSettingsNameNone) {
    Control.SetCommPort(4);
    for (const char* stored : {"0", "17", "banana", "-1", "99999999999999999999"}) {
        Stored = stored;
        EXPECT_EQ(StartupPort(), 4) << stored;
    }
}

TEST_F(FindCOMPorts, StartsOnTheFirstPortThatOpensWhenNothingIsStored) {
    There = {SystemDeviceOf(5), SystemDeviceOf(6)};
    EXPECT_EQ(StartupPort(), 5);
    EXPECT_THAT(Device.Tried, SizeIs(5));
}

TEST_F(FindCOMPorts, StoresTheFirstPortThatOpensForTheNextStart) {
    There = {SystemDeviceOf(6)};
    EXPECT_EQ(StartupPort(), 6);
    EXPECT_EQ(Stored, "6");
}

TEST_F(FindCOMPorts, StoresNothingWhenNoneOpens) {
    StartupPort();
    EXPECT_EQ(Stored, "");
}

TEST_F(FindCOMPorts, StartsOnTheControlsPortWhenNoneOpens) {
    EXPECT_EQ(StartupPort(), 1);
}

}  // namespace burnwick::test
