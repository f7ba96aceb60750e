#include "platform/desktop/OpenLink.h"

#include <gmock/gmock.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "RegistryKey.h"
#include "WideVariable.h"
#include "platform/desktop/Registry.h"

namespace burnwick::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

// A kind of address whose program notes how it was called.
class OpenLinkTest : public testing::Test {
protected:
    OpenLinkTest() {
        Kind_.Put(L"", L"URL Protocol", L"");
        Kind_.Put(L"\\shell\\open\\command", L"", Quoted(ChildProgram()) + L" \"%1\"");
        Allowed_ = SystemRegistry()->HasKey(RegistryRoot::ClassesRoot, "burnwick-test\\shell\\open\\command");
    }

    ForeignFolder Folder_;
    std::filesystem::path Note_ = Folder_.Path() / "note";
    WideVariable Noted_{L"BURNWICK_NOTE", Note_.native()};
    ForeignKey Kind_{HKEY_CLASSES_ROOT, L"burnwick-test", L"URL:test"};
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
