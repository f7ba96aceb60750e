#include <gmock/gmock.h>

#include <map>
#include <set>

#include "ports/modFindCOMPorts.h"
#include "support/FakeDevice.h"

namespace burnwick::test {

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// Opens some paths, and no other.
class SomePorts final : public FakeDevice {
public:
    SomePorts(VirtualLoop& loop, const std::set<std::string>& there) : FakeDevice(loop), There_(there) {}

    CommResult Open(const std::string& path, const LineSettings& settings) override {
        Tried.push_back(path);
        if (!There_.contains(path)) {
            return CommError{CommErrorNumber::NotSerial, path + ": no such device"};
        }
        return FakeDevice::Open(path, settings);
    }

    std::vector<std::string> Tried;

private:
    void HearFrame(const Frame& /*frame*/) override {}
    void LetHappen() override {}

    const std::set<std::string>& There_;
};

}  // namespace

class FindCOMPorts : public ::testing::Test {
protected:
    FindCOMPorts()
        : Device(*new SomePorts(Loop, There)),  // owned by Control
          Control(Loop, std::unique_ptr<SerialDevice>(&Device),
                  [this](int port) { return DeviceOf(port, Read); }) {}

    int StartupPort() { return modFindCOMPorts::ChooseStartupPort(Control, Read, Write); }

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
    EXPECT_EQ(Device.Tried.front(), "/dev/ttyS0");
    EXPECT_EQ(Device.Tried.back(), "/dev/ttyACM3");
}

TEST_F(FindCOMPorts, FindsThePortsThatOpen) {
    There = {"/dev/ttyUSB1", "/dev/ttyACM3"};
    std::vector<int> usable;
    for (const auto& port : modFindCOMPorts::SurveyPorts(Control, Read)) {
        if (port.Usable) {
            usable.push_back(port.Number);
        }
    }
    EXPECT_THAT(usable, ElementsAre(6, 16));
}

TEST_F(FindCOMPorts, LeavesTheControlClosedOnThePortItHad) {
    There = {"/dev/ttyUSB1"};
    Control.SetCommPort(6);
    Control.SetPortOpen(true);
    modFindCOMPorts::SurveyPorts(Control, Read);
    EXPECT_FALSE(Control.PortOpen());
    EXPECT_FALSE(Device.IsOpen());
    EXPECT_EQ(Control.CommPort(), 6);
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
    There = {"/dev/ttyUSB0", "/dev/ttyUSB1"};
    EXPECT_EQ(StartupPort(), 5);
    EXPECT_THAT(Device.Tried, SizeIs(5));
}

TEST_F(FindCOMPorts, StoresTheFirstPortThatOpensForTheNextStart) {
    There = {"/dev/ttyUSB1"};
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
