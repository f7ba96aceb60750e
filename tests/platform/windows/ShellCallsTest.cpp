#include "platform/desktop/ShellCalls.h"

#include <gmock/gmock.h>

#include "Child.h"
#include "ForeignFolder.h"
#include "WideVariable.h"
#include "platform/files/Utf8Path.h"

#include <shellapi.h>

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using ::testing::HasSubstr;

class ShellCallsTest : public testing::Test {
protected:
    ForeignFolder Folder_;
    fs::path Link_ = Folder_.Path() / "Burnwick.lnk";
    fs::path Program_ = Folder_.Path() / u8"\u043F\u0440\u043E\u0433.exe";
    std::unique_ptr<ShellCalls> Shell_ = SystemShellCalls();
};

TEST_F(ShellCallsTest, KnowsTheFolders) {
    EXPECT_TRUE(fs::is_directory(Shell_->DesktopFolder()));
    EXPECT_TRUE(fs::exists(Shell_->WindowsFolder() / "system32"));
}

TEST_F(ShellCallsTest, StoresALinkInTheSystemsOwnFormat) {
    fs::copy_file(ChildProgram(), Program_);
    ASSERT_TRUE(Shell_->StoreLink(Link_, {Program_, "Describes itself"}));
    const auto bytes = Content(Link_);
    constexpr std::size_t headerSize = 76;
    ASSERT_GT(bytes.size(), headerSize);
    EXPECT_EQ(bytes.substr(0, 8), std::string("L\0\0\0\1\x14\2\0", 8));
    constexpr std::string_view wide("D\0e\0s\0c\0r\0i\0b\0e\0s\0", 18);
    EXPECT_THAT(bytes, HasSubstr(std::string(wide)));
}

TEST_F(ShellCallsTest, ReadsALinkAgain) {
    fs::copy_file(ChildProgram(), Program_);
    const LinkContent link{Program_, "Ger\xC3\xA4t \xD0\x97"};
    ASSERT_TRUE(Shell_->StoreLink(Link_, link));
    EXPECT_EQ(Shell_->Link(Link_), link);
    ASSERT_TRUE(Shell_->StoreLink(Link_, {Program_, "another"}));
    EXPECT_EQ(Shell_->Link(Link_)->Description, "another");
}

TEST_F(ShellCallsTest, StoresALinkThatStartsItsProgramInItsFolder) {
    const WideVariable noted(L"BURNWICK_NOTE", (Folder_.Path() / "note").native());
    fs::copy_file(ChildProgram(), Program_);
    ASSERT_TRUE(Shell_->StoreLink(Link_, {Program_, "x"}));
    ShellExecuteW(nullptr, nullptr, Link_.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    ASSERT_TRUE(Appears(Folder_.Path() / "note"));
    const auto note = Content(Folder_.Path() / "note");
    EXPECT_THAT(note, HasSubstr("\xD0\xBF\xD1\x80\xD0\xBE\xD0\xB3.exe"));
    EXPECT_THAT(note, EndsWith('\n' + Utf8Text(Folder_.Path()) + '\n'));
}

TEST_F(ShellCallsTest, WhatIsNoLinkSaysNothing) {
    EXPECT_EQ(Shell_->Link(Link_), std::nullopt);
    Put(Link_, "nonsense");
    EXPECT_EQ(Shell_->Link(Link_), std::nullopt);
    EXPECT_EQ(Shell_->Link(Folder_.Path()), std::nullopt);
    EXPECT_EQ(Shell_->Link(""), std::nullopt);
}

TEST_F(ShellCallsTest, SaysWhenALinkCannotBeStored) {
    EXPECT_FALSE(Shell_->StoreLink(Folder_.Path() / "none" / "Burnwick.lnk", {ChildProgram(), "x"}));
}

}  // namespace
}  // namespace burnwick::test
