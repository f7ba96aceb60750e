#include "platform/desktop/ShellIntegration.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "Child.h"
#include "ForeignFolder.h"
#include "WideVariable.h"
#include "platform/desktop/Registry.h"
#include "platform/desktop/ShellCalls.h"
#include "platform/files/Utf8Path.h"
#include "settings/RegistryShell.h"
#include "settings/ShellCheck.h"
#include "support/FakeSettings.h"

#include <shellapi.h>

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The desktop of whoever runs the test. What he has of the program's is taken away.
class DesktopTest : public testing::Test {
protected:
    DesktopTest() { fs::copy_file(ChildProgram(), Program_); }
    ~DesktopTest() override {
        Shell_->UnregisterFileType();
        std::error_code ignored;
        fs::remove(Link_, ignored);
    }

    static std::string SeenByOthers(const std::wstring& key) {
        return Child(L"reg query \"" + key + L"\" /ve", CREATE_NO_WINDOW).Rest();
    }

    ForeignFolder Folder_;
    fs::path Program_ = Folder_.Path() / "Burnwick.exe";
    fs::path Note_ = Folder_.Path() / "note";
    WideVariable Noted_{L"BURNWICK_NOTE", Note_.native()};
    fs::path Link_ = SystemShellCalls()->DesktopFolder() / "Burnwick.lnk";
    std::unique_ptr<ShellIntegration> Shell_ = DesktopShell();
};

TEST_F(DesktopTest, HasTheSixKeys) {
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    EXPECT_THAT(SeenByOthers(L"HKCR\\.bin"), HasSubstr("REG_SZ    Burnwick\r\n"));
    EXPECT_THAT(SeenByOthers(L"HKCR\\Burnwick"), HasSubstr("REG_SZ    Burnwick File\r\n"));
    EXPECT_THAT(SeenByOthers(L"HKCR\\Burnwick\\DefaultIcon"),
                HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe,0\r\n"));
    EXPECT_THAT(SeenByOthers(L"HKCR\\Burnwick\\shell"), HasSubstr("REG_SZ    \r\n"));
    EXPECT_THAT(SeenByOthers(L"HKCR\\Burnwick\\shell\\open"),
                HasSubstr("REG_SZ    &Flash with Burnwick\r\n"));
    EXPECT_THAT(SeenByOthers(L"HKCR\\Burnwick\\shell\\open\\command"),
                HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe %1\r\n"));
}

TEST_F(DesktopTest, OpensAnImageWithTheProgramItsPathUnquoted) {
    Shell_->RegisterFileType(Program_);
    const auto image = Folder_.Path() / u8"\u043E\u0431\u0440\u0430\u0437 1.bin";
    Put(image, "x");
    ShellExecuteW(nullptr, nullptr, image.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    ASSERT_TRUE(Appears(Note_));
    EXPECT_THAT(Content(Note_), HasSubstr("Burnwick.exe"));
    EXPECT_THAT(Content(Note_), HasSubstr(' ' + Utf8Text(image) + '\n'));
}

TEST_F(DesktopTest, HasNoneOfTheKeysWhenTheAssociationIsTakenAway) {
    Shell_->RegisterFileType(Program_);
    EXPECT_EQ(Shell_->AssociatedProgram(), Program_);
    Shell_->UnregisterFileType();
    const auto registry = SystemRegistry();
    EXPECT_FALSE(registry->HasKey(RegistryRoot::ClassesRoot, ".bin"));
    EXPECT_FALSE(registry->HasKey(RegistryRoot::ClassesRoot, "Burnwick"));
    EXPECT_EQ(Shell_->AssociatedProgram(), "");
}

// A start tells its path as it was typed.
TEST_F(DesktopTest, KeepsTheAssociationWhenItsProgramIsStartedInOtherLettersOrByItsShortName) {
    std::array<wchar_t, MAX_PATH> shortName{};
    ASSERT_NE(GetShortPathNameW(Program_.c_str(), shortName.data(), MAX_PATH), 0U);
    Shell_->RegisterFileType(Program_);
    const auto changes = [this](const fs::path& program) {
        std::vector<std::string> stored;
        FakeSettings settings{{"Options/ContextMenu", "No"}, {"Options/Desktop", "No"}};
        settings.OnStore = [&stored](const auto& name, const auto&) { stored.push_back(name); };
        CheckShellIntegration(*Shell_, program, settings);
        return stored;
    };
    for (const fs::path& typed : {Folder_.Path() / "BURNWICK.exe", fs::path(shortName.data())}) {
        EXPECT_THAT(changes(typed), IsEmpty());
        EXPECT_EQ(Shell_->AssociatedProgram(), Program_);
    }
}

TEST_F(DesktopTest, HasALinkThatStartsTheProgramAndIsTheUsersToDelete) {
    Shell_->CreateDesktopShortcut(Program_);
    ASSERT_TRUE(fs::exists(Link_));
    ShellExecuteW(nullptr, nullptr, Link_.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    EXPECT_TRUE(Appears(Note_));
    Shell_->DeleteDesktopShortcut();
    EXPECT_TRUE(fs::exists(Link_));
}

TEST_F(DesktopTest, LosesTheLinkOnTheSystemsDesktop) {
    const auto desktop = SystemShellCalls()->WindowsFolder() / "Desktop";
    std::error_code error;
    if (!fs::create_directory(desktop, error) && !fs::is_directory(desktop)) {
        GTEST_SKIP() << "only an administrator may write there";
    }
    Put(desktop / "Burnwick.lnk", "x");
    Shell_->DeleteDesktopShortcut();
    EXPECT_FALSE(fs::exists(desktop / "Burnwick.lnk"));
    fs::remove(desktop, error);
}

}  // namespace
}  // namespace burnwick::test
