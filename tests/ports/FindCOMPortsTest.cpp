#include <gmock/gmock.h>

#include <map>
#include <set>

#include "platform/SystemPorts.h"
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
                  [this](int port) { return DeviceOf(port, Read); }) {}

    int StartupPort() { return modFindCOMPorts::ChooseStartupPort(Control, Read, Write); }

    std::vector<std::string> Listed() {
        std::vector<std::string> texts;
        for (const auto& entry : modFindCOMPorts::FindCOMPorts(Control, Read).Entries) {
            texts.push_back(entry.Text);
        }
        return texts;
    }

    std::map<std::string, std::string> Settings;
    ReadSetting Read = [this](const std::string& section, const std::string& key) {
        return Settings[section + "/" + key];
    };
    WriteSetting Write = [this](const std::string& section, const std::string& key,
                                const std::string& value) { Settings[section + "/" + key] = value; };
    VirtualLoop Loop;
    std::set<std::string> There;
    SomePorts& Device;
    MSComm Control;
};

TEST_F(FindCOMPorts, TriesCOM1ToCOM16InTheirOrder) {
    modFindCOMPorts::SurveyPorts(Control, Read);
    ASSERT_THAT(Device.Tried, SizeIs(16));
    EXPECT_EQ(Device.Tried.front(), SystemDeviceOf(1));
    EXPECT_EQ(Device.Tried.back(), SystemDeviceOf(16));
}

TEST_F(FindCOMPorts, FindsThePortsThatOpen) {
    There = {SystemDeviceOf(6), SystemDeviceOf(16)};
    std::vector<int> usable;
    for (const auto& port : modFindCOMPorts::SurveyPorts(Control, Read)) {
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
    modFindCOMPorts::SurveyPorts(Control, Read);
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
    Settings["Ports/COM17"] = "/dev/ttyUSB8";
    There = {"/dev/ttyUSB8", SystemDeviceOf(17)};
    EXPECT_THAT(Listed(), ElementsAre("No COM Port Available"));
}

TEST_F(FindCOMPorts, SelectsTheControlsPort) {
    There = {SystemDeviceOf(1), SystemDeviceOf(6), SystemDeviceOf(13)};
    Control.SetCommPort(6);
    EXPECT_EQ(modFindCOMPorts::FindCOMPorts(Control, Read).Selected, 1U);
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
    Settings["COMPort/COM"] = "7";
    EXPECT_EQ(StartupPort(), 7);
    EXPECT_THAT(Device.Tried, SizeIs(0));
}

TEST_F(FindCOMPorts, KeepsTheControlsPortWhenTheSettingsNameNone) {
    Control.SetCommPort(4);
    for (const char* stored : {"0", "17", "banana", "-1", "99999999999999999999"}) {
        Settings["COMPort/COM"] = stored;
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
    EXPECT_EQ(Settings["COMPort/COM"], "6");
}

TEST_F(FindCOMPorts, StoresNothingWhenNoneOpens) {
    StartupPort();
    EXPECT_EQ(Settings["COMPort/COM"], "");
}

TEST_F(FindCOMPorts, StartsOnTheControlsPortWhenNoneOpens) {
    EXPECT_EQ(StartupPort(), 1);
}

}  // namespace burnwick::test
