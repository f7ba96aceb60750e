#include <gmock/gmock.h>

#include "Child.h"
#include "RegistryKey.h"
#include "platform/desktop/Registry.h"
#include "platform/desktop/ShellIntegration.h"
#include "platform/process/windows/WideText.h"
#include "settings/RegistryShell.h"

namespace burnwick::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

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

    // All six keys of it.
    static void ExpectOursIsTheUsersOwn() {
        constexpr auto own = L"HKCU\\Software\\Classes\\";
        EXPECT_THAT(Seen(own + std::wstring(L".bin")), HasSubstr("REG_SZ    Burnwick\r\n"));
        EXPECT_THAT(Seen(own + std::wstring(L"Burnwick")),
                    AllOf(HasSubstr("REG_SZ    Burnwick File\r\n"),
                          HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe,0\r\n"),
                          HasSubstr("REG_SZ    &Flash with Burnwick\r\n"),
                          HasSubstr("REG_SZ    C:\\Burnwick\\Burnwick.exe %1\r\n")));
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
    ExpectOursIsTheUsersOwn();
    EXPECT_EQ(Shell_->AssociatedProgram(), "C:\\Burnwick\\Burnwick.exe");
    Shell_->UnregisterFileType();
    EXPECT_FALSE(IsThere(RegistryRoot::CurrentUser, "Software\\Classes\\.bin"));
    EXPECT_FALSE(IsThere(RegistryRoot::CurrentUser, "Software\\Classes\\Burnwick"));
    EXPECT_EQ(Seen(L"HKCR\\.bin"), before);
}

TEST_F(ForeignAssociationTest, IsLeftForTheUsersOwnWhenTheSystemRefusesInTheMiddleOfOurs) {
    const ForeignKey type(HKEY_CLASSES_ROOT, L"Burnwick", L"");
    type.Put(L"\\shell", L"", L"");
    const RefusingKey refusing(HKEY_CLASSES_ROOT, L"Burnwick\\shell");
    const auto before = Seen(L"HKLM\\Software\\Classes\\.bin");
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    ExpectOursIsTheUsersOwn();
    EXPECT_EQ(Seen(L"HKLM\\Software\\Classes\\.bin"), before);
    EXPECT_THAT(Seen(L"HKLM\\Software\\Classes\\Burnwick"),
                AllOf(Not(HasSubstr("Burnwick File")), Not(HasSubstr("Burnwick.exe"))));
}

TEST_F(ForeignAssociationTest, IsLeftWhereNeitherAllNorTheUserMayHaveAnother) {
    const ForeignKey own(HKEY_CURRENT_USER, L"Software\\Classes\\.bin", L"Burnwick-Test-Viewer");
    const RefusingKey refusing(HKEY_CLASSES_ROOT, L".bin");
    const RefusingKey refusingUser(HKEY_CURRENT_USER, L"Software\\Classes\\.bin");
    const auto before = Seen(L"HKCR\\.bin") + Seen(L"HKCU\\Software\\Classes\\.bin");
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    EXPECT_EQ(Seen(L"HKCR\\.bin") + Seen(L"HKCU\\Software\\Classes\\.bin"), before);
    EXPECT_FALSE(IsThere(RegistryRoot::ClassesRoot, "Burnwick"));
    EXPECT_FALSE(IsThere(RegistryRoot::CurrentUser, "Software\\Classes\\Burnwick"));
    EXPECT_EQ(Shell_->AssociatedProgram(), "");
}

// What the user has chosen from the file manager's "Open with".
class ChosenAssociationTest : public ForeignAssociationTest {
protected:
    void SetUp() override {
        if (IsThere(RegistryRoot::CurrentUser, NarrowText(Choices_))) {
            GTEST_SKIP() << "what this user has chosen is not touched";
        }
        ForeignAssociationTest::SetUp();
    }

    std::unique_ptr<ForeignKey> Chosen(const wchar_t* type) const {
        auto choices = std::make_unique<ForeignKey>(HKEY_CURRENT_USER, Choices_, L"");
        choices->Put(L"\\UserChoice", L"ProgId", type);
        return choices;
    }

    std::wstring Choices_ = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.bin";
};

TEST_F(ChosenAssociationTest, GoesBeforeOurs) {
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    const auto chosen = Chosen(L"Burnwick-Test-Viewer");
    EXPECT_EQ(Shell_->AssociatedProgram(), "");
}

TEST_F(ChosenAssociationTest, MayBeOurs) {
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    const auto chosen = Chosen(L"Burnwick");
    EXPECT_EQ(Shell_->AssociatedProgram(), "C:\\Burnwick\\Burnwick.exe");
}

TEST_F(ChosenAssociationTest, IsLeftAsItIs) {
    const auto chosen = Chosen(L"Burnwick-Test-Viewer");
    const auto before = Seen(L"HKCU\\" + Choices_);
    ASSERT_THAT(before, HasSubstr("Burnwick-Test-Viewer"));
    Shell_->RegisterFileType("C:\\Burnwick\\Burnwick.exe");
    Shell_->UnregisterFileType();
    EXPECT_EQ(Seen(L"HKCU\\" + Choices_), before);
}

}  // namespace
}  // namespace burnwick::test
