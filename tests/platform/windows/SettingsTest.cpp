#include <gtest/gtest.h>

#include <vector>

#include "Child.h"
#include "ForeignFolder.h"
#include "ForeignText.h"
#include "WideVariable.h"
#include "platform/process/windows/WideText.h"
#include "settings/modUtility.h"

// The settings between several copies of the program, beside programs of other makers, and in trouble.
namespace burnwick::test {
namespace {

namespace fs = std::filesystem;
using modUtility::ReadIniValue;
using modUtility::WriteIniValue;

class SettingsTest : public testing::Test {
protected:
    SettingsTest() { modUtility::SetIniPath(Path_); }

    // Of another copy of the program, that writes so many keys of its section.
    std::wstring CommandOf(const std::string& section, int keys) const {
        return Child::Doing(L"write-settings " + Quoted(Path_) + L' '
                            + WideText(section + ' ' + std::to_string(keys)));
    }
    static std::string Key(int number) { return "Key" + std::to_string(number); }

    ForeignFolder Folder_;
    fs::path Path_ = Folder_.Path() / "Burnwick.ini";
};

class ForeignSettingsTest : public SettingsTest {
protected:
    void SetUp() override {
        if (!Text_) {
            GTEST_SKIP() << "no sample of this computer's language";
        }
    }

    std::optional<ForeignText> Text_ = TextOfThisLanguage();
    // Whoever knows no Unicode cannot name the other folder.
    TempFolder PlainFolder_;
    fs::path PlainPath_ = PlainFolder_.Path() / "Burnwick.ini";
};

TEST_F(ForeignSettingsTest, AreReadInTheSystemsOwn8BitCharacters) {
    Put(Path_, "[Path]\r\nLastPath=C:\\" + Text_->Bytes + "\r\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), "C:\\" + Text_->Utf8);
}

TEST_F(ForeignSettingsTest, AreReadAsAnotherProgramHasWrittenThem) {
    modUtility::SetIniPath(PlainPath_);
    Child writer(Child::Doing(L"write-profile " + Quoted(PlainPath_) + L' ' + Quoted(Text_->Wide)));
    ASSERT_EQ(writer.ExitCode(), 0U);
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), Text_->Utf8);
}

TEST_F(ForeignSettingsTest, StayAsTheyAreBesideOurOwnValues) {
    const auto theirs = "[Path]\r\nLastPath=C:\\" + Text_->Bytes + "\r\n";
    Put(Path_, theirs);
    WriteIniValue("Path", "Own", "\u0417\u4E00");
    EXPECT_EQ(Content(Path_), theirs + "Own=\u0417\u4E00\r\n");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), "C:\\" + Text_->Utf8);
    EXPECT_EQ(ReadIniValue("Path", "Own"), "\u0417\u4E00");
}

TEST_F(SettingsTest, OfFourCopiesAtOnceAreAllKept) {
    constexpr int keys = 25;
    const std::vector<std::string> sections{"One", "Two", "Three", "Four"};
    {
        std::vector<std::unique_ptr<Child>> copies;
        for (const auto& section : sections) {
            copies.push_back(std::make_unique<Child>(CommandOf(section, keys)));
        }
        for (const auto& copy : copies) {
            EXPECT_EQ(copy->ExitCode(), 0U);
        }
    }
    for (const auto& section : sections) {
        for (int key = 0; key < keys; ++key) {
            ASSERT_EQ(ReadIniValue(section, Key(key)), std::to_string(key)) << section;
        }
    }
}

TEST_F(SettingsTest, AreWholeWhereverAWriterIsKilled) {
    constexpr int rounds = 15;
    for (int round = 0; round < rounds; ++round) {
        const auto section = "Round" + std::to_string(round);
        Child writer(CommandOf(section, 100'000));
        ASSERT_EQ(writer.Line(), "written");
        std::this_thread::sleep_for(std::chrono::microseconds(round * 331));  // at another moment each time
        writer.Kill();
        WriteIniValue("After", section, "x");
        ASSERT_EQ(ReadIniValue("After", section), "x") << "what a killed writer left is in the way";
        for (int earlier = 0; earlier <= round; ++earlier) {
            ASSERT_EQ(ReadIniValue("Round" + std::to_string(earlier), Key(0)), "0");
        }
    }
    EXPECT_FALSE(fs::exists(fs::path(Path_) += ".new"));
}

TEST_F(SettingsTest, AreLeftWhenTheFileMayNotBeWritten) {
    Put(Path_, "[COMPort]\r\nCOM=3\r\n");
    ASSERT_NE(SetFileAttributesW(Path_.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    WriteIniValue("COMPort", "COM", "4");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "3");
    SetFileAttributesW(Path_.c_str(), FILE_ATTRIBUTE_NORMAL);
    WriteIniValue("COMPort", "COM", "4");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "4");
}

// A program on a drive that cannot be written; a test's surroundings put one there.
class InstalledSettingsTest : public SettingsTest {
protected:
    void SetUp() override {
        if (Installed_.empty()) {
            GTEST_SKIP() << "BURNWICK_READ_ONLY_FOLDER names no folder with the child program in it";
        }
    }

    fs::path Installed_ = PathFromEnvironment(L"BURNWICK_READ_ONLY_FOLDER");
    WideVariable NoHome_{L"BURNWICK_HOME", std::nullopt};
    WideVariable Data_{L"LOCALAPPDATA", Folder_.Path().native()};
};

TEST_F(InstalledSettingsTest, AreTheUsersOwnBesideAProgramThatLiesWhereNobodyMayWrite) {
    EXPECT_EQ(Child(Quoted(Installed_ / "windows_child.exe") + L" own-settings").Line(), "5");
    EXPECT_EQ(Content(Folder_.Path() / "Burnwick" / "Burnwick.ini"), "[COMPort]\r\nCOM=5\r\n");
}

TEST_F(InstalledSettingsTest, AreNotKeptInAFolderThatNobodyMayWrite) {
    modUtility::SetIniPath(Installed_ / "Burnwick.ini");
    WriteIniValue("COMPort", "COM", "5");
    EXPECT_EQ(ReadIniValue("COMPort", "COM"), "");
}

}  // namespace
}  // namespace burnwick::test
