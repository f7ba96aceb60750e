#include "settings/Settings.h"

#include "settings/SettingsFile.h"
#include "support/FakeSettings.h"

namespace burnwick::test {

TEST(SettingValues, AreTheStoredOnesOrTheirDefaults) {
    FakeSettings settings{{"Options/Verify", "1"}};
    EXPECT_EQ(settings.Value(Setting::Verify), "1");
    EXPECT_EQ(settings.Value(Setting::LogOption), "&All");
    EXPECT_EQ(settings.Value(Setting::LastPath), "");
}

TEST(LogOption, IsSetToAllWhereNothingIsStored) {
    FakeSettings settings;
    EXPECT_EQ(LogOption(settings), "&All");
    EXPECT_EQ(settings["Options/LogOption"], "&All");
}

TEST(LogOption, IsKeptAsItIsStored) {
    for (const char* const stored : {"&All", "&Summary", "&Disable", "nonsense"}) {
        FakeSettings settings{{"Options/LogOption", stored}};
        settings.OnStore = [](const auto& name, const auto&) { ADD_FAILURE() << name; };
        EXPECT_EQ(LogOption(settings), stored);
    }
}

TEST(LogOption, IsAllEvenWhereItCannotBeStored) {
    FakeSettings settings;
    settings.IsReadOnly = true;
    EXPECT_EQ(LogOption(settings), "&All");
}

TEST(PortDevices, AreThoseOfTheSettings) {
    FakeSettings settings{{"Ports/COM5", "/dev/serial/by-id/usb-A"}};
    EXPECT_EQ(PortDevices(settings)(5), "/dev/serial/by-id/usb-A");
    EXPECT_EQ(PortDevices(settings)(6), "");
}

class IniSettingsTest : public SettingsFile {};

TEST_F(IniSettingsTest, AreStoredInTheFile) {
    IniSettings().Store(Setting::ComPort, "7");
    EXPECT_EQ(IniSettings().Stored(Setting::ComPort), "7");
    EXPECT_EQ(modUtility::ReadIniValue("COMPort", "COM"), "7");
}

TEST_F(IniSettingsTest, ThatBelongTogetherAreStoredAtOnce) {
    IniSettings().Change([](SettingValues& settings) {
        settings.Store(Setting::ComPort, "7");
        settings.Store(Setting::BaudRate, "1");
        EXPECT_EQ(settings.Stored(Setting::ComPort), "7") << "within the change";
        EXPECT_EQ(modUtility::ReadIniValue("COMPort", "COM"), "") << "in the file";
    });
    EXPECT_EQ(IniSettings().Stored(Setting::ComPort), "7");
    EXPECT_EQ(IniSettings().Stored(Setting::BaudRate), "1");
}

TEST_F(IniSettingsTest, ThatAreStoredAlreadyTakeNoLock) {
    IniSettings().Store(Setting::ComPort, "7");
    std::filesystem::remove(Folder.Path() / "Burnwick.ini.lock");
    IniSettings().Store(Setting::ComPort, "7");
    EXPECT_FALSE(std::filesystem::exists(Folder.Path() / "Burnwick.ini.lock"));
    IniSettings().Store(Setting::ComPort, "8");
    EXPECT_TRUE(std::filesystem::exists(Folder.Path() / "Burnwick.ini.lock"));
}

}  // namespace burnwick::test
