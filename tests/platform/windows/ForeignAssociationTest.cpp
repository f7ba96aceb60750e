#include <gmock/gmock.h>

#include "Child.h"
#include "RegistryKey.h"
#include "platform/Registry.h"
#include "platform/ShellIntegration.h"
#include "platform/windows/WideText.h"
#include "settings/RegistryShell.h"

namespace burnwick::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

// Another program has "*.bin", for all users of this computer.
class ForeignAssociationTest : public testing::Test {
protected:
    void SetUp() override {
        if (SystemRegistry()->HasKey(RegistryRoot::ClassesRoot, ".bin")) {
            GTEST_SKIP() << "what this user has for such files is not touched";
        }
        Extension_ = std::make_unique<ForeignKey>(HKEY_CLASSES_ROOT, L".bin", L"Burnwick-Test-Viewer");
        Extension_->Put(L"", L"Content Type", L"application/octet-stream");
        Extension_->Put(L"\\OpenWithProgids", L"Burnwick-Test-Viewer", L"");
        Extension_->Put(L"\\PersistentHandler", L"", L"{098f2470-bae0-11cd-b579-08002b30bfeb}");
        Type_ = std::make_unique<ForeignKey>(HKEY_CLASSES_ROOT, L"Burnwick-Test-Viewer", L"Viewer File");
        if (SystemRegistry()->Text(RegistryRoot::ClassesRoot, ".bin", "") != "Burnwick-Test-Viewer") {
            GTEST_SKIP() << "only an administrator may write there";
        }
    }
    ~ForeignAssociationTest() override { Shell_->UnregisterFileType(); }

    // With all below it.
    static std::string Seen(const std::wstring& key) {
        return Child(L"reg query \"" + key + L"\" /s", CREATE_NO_WINDOW).Rest();
    }
    static bool IsThere(RegistryRoot root, const std::string& key) {
        return SystemRegistry()->HasKey(root, key);
    }

    std::unique_ptr<ForeignKey> Extension_;
    std::unique_ptr<ForeignKey> Type_;
    std::unique_ptr<ShellIntegration> Shell_ = DesktopShell();
};

TEST_F(ForeignAssociationTest, IsLeftWhenOursIsTakenAway) {
    const auto before = Seen(L"HKCR\\.bin");
    ASSERT_THAT(before, AllOf(HasSubstr("REG_SZ    Burnwick-Test-Viewer\r\n"), HasSubstr("OpenWithProgids"),
                              HasSubstr("PersistentHandler"), HasSubstr("application/octet-stream")));
    Shell_->UnregisterFileType();
    EXPECT_EQ(Seen(L"HKCR\\.bin"), before);
}

TEST_F(ForeignAssociationTest, IsGivenItsExtensionBackWithAllThatIsInIt) {
    const auto before = Seen(L"HKCR\\.bin");
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    EXPECT_THAT(Seen(L"HKCR\\.bin"), HasSubstr("REG_SZ    Burnwick\r\n"));
    EXPECT_EQ(Shell_->AssociatedProgram(), "C:\\Burnwick\\Burnwick.exe");
    Shell_->UnregisterFileType();
    EXPECT_EQ(Seen(L"HKCR\\.bin"), before);
    EXPECT_FALSE(IsThere(RegistryRoot::ClassesRoot, "Burnwick"));
}

TEST_F(ForeignAssociationTest, OfAProgramThatHasBeenRemovedIsNotBroughtBack) {
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    Type_->Remove();
    Shell_->UnregisterFileType();
    EXPECT_EQ(SystemRegistry()->Text(RegistryRoot::ClassesRoot, ".bin", ""), std::nullopt);
    EXPECT_THAT(Seen(L"HKCR\\.bin"), HasSubstr("PersistentHandler"));
}

TEST_F(ForeignAssociationTest, ThatHasTakenThePlaceOfOursIsLeft) {
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    Extension_->Put(L"", L"", L"Burnwick-Test-Editor");
    EXPECT_EQ(Shell_->AssociatedProgram(), "");
    Shell_->UnregisterFileType();
    EXPECT_EQ(SystemRegistry()->Text(RegistryRoot::ClassesRoot, ".bin", ""), "Burnwick-Test-Editor");
    EXPECT_FALSE(IsThere(RegistryRoot::ClassesRoot, "Burnwick"));
}

TEST_F(ForeignAssociationTest, ThatCannotBeWrittenIsLeftForTheUsersOwn) {
    const RefusingKey refusing(HKEY_CLASSES_ROOT, L".bin");
    const auto before = Seen(L"HKCR\\.bin");
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    constexpr auto own = L"HKCU\\Software\\Classes\\";
    EXPECT_THAT(Seen(own + std::wstring(L".bin")), HasSubstr("REG_SZ    Burnwick\r\n"));
    EXPECT_THAT(Seen(own + std::wstring(L"Burnwick")),
                AllOf(HasSubstr("REG_SZ    Burnwick File\r\n"),
                      HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe,0\r\n"),
                      HasSubstr("REG_SZ    &Flash with Burnwick\r\n"),
                      HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe %1\r\n")));
    EXPECT_EQ(Shell_->AssociatedProgram(), "C:\\Burnwick\\Burnwick.exe");
    Shell_->UnregisterFileType();
    EXPECT_FALSE(IsThere(RegistryRoot::CurrentUser, "Software\\Classes\\.bin"));
    EXPECT_FALSE(IsThere(RegistryRoot::CurrentUser, "Software\\Classes\\Burnwick"));
    EXPECT_EQ(Seen(L"HKCR\\.bin"), before);
}

}  // namespace
}  // namespace burnwick::test
