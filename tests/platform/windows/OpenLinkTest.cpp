#include "platform/OpenLink.h"

#include <gmock/gmock.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "WideVariable.h"
#include "platform/Registry.h"
#include "platform/Utf8Path.h"

namespace burnwick::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

// A kind of address whose program notes how it was called.
class OpenLinkTest : public testing::Test {
protected:
    OpenLinkTest() {
        Registry_->StoreText(RegistryRoot::ClassesRoot, Key_, "URL:test");
        RegSetKeyValueW(HKEY_CLASSES_ROOT, L"burnwick-test", L"URL Protocol", REG_SZ, L"", sizeof(wchar_t));
        Allowed_ = Registry_->StoreText(RegistryRoot::ClassesRoot, Key_ + "\\shell\\open\\command",
                                        '"' + Utf8Text(ChildProgram()) + "\" \"%1\"");
    }
    ~OpenLinkTest() override { Registry_->Delete(RegistryRoot::ClassesRoot, Key_); }

    ForeignFolder Folder_;
    std::filesystem::path Note_ = Folder_.Path() / "note";
    WideVariable Noted_{L"BURNWICK_NOTE", Note_.native()};
    std::string Key_ = "burnwick-test";
    std::unique_ptr<Registry> Registry_ = SystemRegistry();
    bool Allowed_ = false;
};

TEST_F(OpenLinkTest, HandsTheAddressOverAsItStandsInTheDrivesFolder) {
    if (!Allowed_) {
        GTEST_SKIP() << "only an administrator may make a kind of address known to all";
    }
    EXPECT_TRUE(OpenLink("burnwick-test:a?b=\xC3\xBC&c;d"));
    ASSERT_TRUE(Appears(Note_));
    EXPECT_THAT(Content(Note_), HasSubstr("\"burnwick-test:a?b=\xC3\xBC&c;d\""));
    EXPECT_THAT(Content(Note_), EndsWith("\nC:\\\n"));
}

TEST_F(OpenLinkTest, SaysWhenTheDesktopHasNoProgramForIt) {
    EXPECT_FALSE(OpenLink("burnwick-nobody:a"));
}

}  // namespace
}  // namespace burnwick::test
