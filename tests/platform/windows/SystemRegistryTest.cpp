#include <gmock/gmock.h>

#include "Child.h"
#include "RegistryKey.h"
#include "platform/desktop/Registry.h"
#include "platform/process/windows/WideText.h"

namespace burnwick::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// In a key of the test's own; what another program sees of it is asked of the system's own tool.
class SystemRegistryTest : public testing::Test {
protected:
    ~SystemRegistryTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, WideText(Key_).c_str()); }

    static std::string SeenByOthers(const std::string& key) {
        return Child(L"reg query \"" + WideText(key) + L"\" /s", CREATE_NO_WINDOW).Rest();
    }

    static constexpr auto Root_ = RegistryRoot::CurrentUser;
    std::string Key_ = "Software\\Burnwick-Test";
    std::unique_ptr<Registry> Registry_ = SystemRegistry();
};

TEST_F(SystemRegistryTest, StoresTheDefaultValueForAllToSee) {
    EXPECT_TRUE(Registry_->StoreText(Root_, Key_ + "\\one\\two", "", "C:\\a b\\Burnwick.exe %1"));
    EXPECT_THAT(SeenByOthers("HKCU\\" + Key_), HasSubstr("REG_SZ    C:\\a b\\Burnwick.exe %1"));
    EXPECT_EQ(Registry_->Text(Root_, Key_ + "\\one\\two", ""), "C:\\a b\\Burnwick.exe %1");
}

TEST_F(SystemRegistryTest, ReplacesAValue) {
    Registry_->StoreText(Root_, Key_, "", "a longer one");
    Registry_->StoreText(Root_, Key_, "", "new");
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), "new");
}

TEST_F(SystemRegistryTest, KeepsTextsOfAnyScriptAndEmptyOnes) {
    const std::string text = "C:\\Ger\xC3\xA4t\\\xD0\x97\\\xE6\x9D\xB1\\\xF0\x9F\x94\xA5.exe";
    EXPECT_TRUE(Registry_->StoreText(Root_, Key_ + "\\\xD0\x97", "", text));
    EXPECT_EQ(Registry_->Text(Root_, Key_ + "\\\xD0\x97", ""), text);
    EXPECT_TRUE(Registry_->StoreText(Root_, Key_, "", ""));
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), "");
}

TEST_F(SystemRegistryTest, TellsAKeyFromItsValue) {
    EXPECT_FALSE(Registry_->HasKey(Root_, Key_));
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), std::nullopt);
    Registry_->StoreText(Root_, Key_ + "\\below", "", "x");
    EXPECT_TRUE(Registry_->HasKey(Root_, Key_));
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), std::nullopt);
    EXPECT_EQ(Registry_->Text(Root_, Key_ + "\\below", "name"), std::nullopt);
}

TEST_F(SystemRegistryTest, ReadsWhatOtherProgramsHaveLeftInAnyShape) {
    Registry_->StoreText(Root_, Key_, "", "x");
    const auto put = [this](const wchar_t* name, DWORD type, const wchar_t* data, std::size_t characters) {
        RegSetKeyValueW(HKEY_CURRENT_USER, WideText(Key_).c_str(), name, type, data,
                        static_cast<DWORD>(characters * sizeof(wchar_t)));
    };
    put(L"unended", REG_SZ, L"abcdef", 3);
    put(L"twice ended", REG_SZ, L"ab\0cd", 6);
    put(L"unexpanded", REG_EXPAND_SZ, L"%PATH%", 7);
    put(L"number", REG_DWORD, L"ab", 2);
    EXPECT_EQ(Registry_->Text(Root_, Key_, "unended"), "abc");
    EXPECT_EQ(Registry_->Text(Root_, Key_, "twice ended"), "ab");
    EXPECT_EQ(Registry_->Text(Root_, Key_, "unexpanded"), "%PATH%");
    EXPECT_EQ(Registry_->Text(Root_, Key_, "number"), std::nullopt);
}

TEST_F(SystemRegistryTest, StoresATextUnderAName) {
    EXPECT_TRUE(Registry_->StoreText(Root_, Key_, "Na\xD0\x97me", "named"));
    EXPECT_THAT(SeenByOthers("HKCU\\" + Key_), HasSubstr("REG_SZ    named"));
    EXPECT_EQ(Registry_->Text(Root_, Key_, "Na\xD0\x97me"), "named");
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), std::nullopt);
}

TEST_F(SystemRegistryTest, DeletesOneValueOfAKey) {
    Registry_->StoreText(Root_, Key_, "", "default");
    Registry_->StoreText(Root_, Key_, "name", "named");
    Registry_->DeleteValue(Root_, Key_, "");
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), std::nullopt);
    EXPECT_EQ(Registry_->Text(Root_, Key_, "name"), "named");
    Registry_->DeleteValue(Root_, Key_, "name");
    EXPECT_EQ(Registry_->Text(Root_, Key_, "name"), std::nullopt);
    EXPECT_TRUE(Registry_->HasKey(Root_, Key_));
}

TEST_F(SystemRegistryTest, DeletesNoValueOfAKeyThatIsNotThere) {
    Registry_->DeleteValue(Root_, Key_, "");
    EXPECT_FALSE(Registry_->HasKey(Root_, Key_));
}

TEST_F(SystemRegistryTest, TellsAnEmptyKey) {
    EXPECT_FALSE(Registry_->IsEmpty(Root_, Key_)) << "it is not there";
    Registry_->StoreText(Root_, Key_, "", "x");
    EXPECT_FALSE(Registry_->IsEmpty(Root_, Key_));
    Registry_->DeleteValue(Root_, Key_, "");
    EXPECT_TRUE(Registry_->IsEmpty(Root_, Key_));
    Registry_->StoreText(Root_, Key_, "name", "x");
    EXPECT_FALSE(Registry_->IsEmpty(Root_, Key_));
    Registry_->DeleteValue(Root_, Key_, "name");
    Registry_->StoreText(Root_, Key_ + "\\below", "", "x");
    EXPECT_FALSE(Registry_->IsEmpty(Root_, Key_));
}

TEST_F(SystemRegistryTest, DeletesAKeyWithItsValues) {
    Registry_->StoreText(Root_, Key_ + "\\one", "name", "x");
    Registry_->StoreText(Root_, Key_ + "\\other", "", "x");
    Registry_->Delete(Root_, Key_ + "\\one");
    EXPECT_FALSE(Registry_->HasKey(Root_, Key_ + "\\one"));
    EXPECT_TRUE(Registry_->HasKey(Root_, Key_ + "\\other"));
}

TEST_F(SystemRegistryTest, DeletesNoKeyThatHasOthersBelowIt) {
    Registry_->StoreText(Root_, Key_ + "\\one\\two", "", "x");
    Registry_->Delete(Root_, Key_ + "\\one");
    EXPECT_EQ(Registry_->Text(Root_, Key_ + "\\one\\two", ""), "x");
}

TEST_F(SystemRegistryTest, DeletesNeverAWholeRoot) {
    Registry_->StoreText(Root_, Key_, "", "x");
    Registry_->Delete(Root_, "");
    EXPECT_TRUE(Registry_->HasKey(Root_, Key_));
}

TEST_F(SystemRegistryTest, SaysWhenTheSystemRefuses) {
    EXPECT_FALSE(Registry_->StoreText(Root_, Key_ + '\\' + std::string(300, 'k'), "", "x"));
}

TEST_F(SystemRegistryTest, SaysWhenAKeyRefusesAndLeavesItAsItWas) {
    Registry_->StoreText(Root_, Key_, "", "old");
    const RefusingKey refusing(HKEY_CURRENT_USER, WideText(Key_).c_str());
    const auto before = SeenByOthers("HKCU\\" + Key_);
    EXPECT_FALSE(Registry_->StoreText(Root_, Key_, "", "new"));
    EXPECT_FALSE(Registry_->StoreText(Root_, Key_, "name", "new"));
    EXPECT_EQ(SeenByOthers("HKCU\\" + Key_), before);
}

TEST_F(SystemRegistryTest, DeletesNoValueOfAKeyThatRefuses) {
    Registry_->StoreText(Root_, Key_, "", "old");
    const RefusingKey refusing(HKEY_CURRENT_USER, WideText(Key_).c_str());
    Registry_->DeleteValue(Root_, Key_, "");
    EXPECT_EQ(Registry_->Text(Root_, Key_, ""), "old");
}

TEST_F(SystemRegistryTest, ShowsTheUsersClassesAmongAll) {
    if (GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr) {
        GTEST_SKIP() << "wine keeps them apart";
    }
    Registry_->StoreText(Root_, "Software\\Classes\\.burnwick-test", "", "Burnwick");
    EXPECT_EQ(Registry_->Text(RegistryRoot::ClassesRoot, ".burnwick-test", ""), "Burnwick");
    Registry_->Delete(Root_, "Software\\Classes\\.burnwick-test");
    EXPECT_FALSE(Registry_->HasKey(RegistryRoot::ClassesRoot, ".burnwick-test"));
}

}  // namespace
}  // namespace burnwick::test
