#include "settings/RegistryShell.h"

#include <gmock/gmock.h>

#include <fstream>
#include <utility>

#include "FakeRegistry.h"
#include "support/TempFolder.h"

namespace burnwick::test {
namespace {

using ::testing::IsEmpty;

namespace fs = std::filesystem;

// A shell whose links are files of two lines: target and description.
class FakeShellCalls final : public ShellCalls {
public:
    fs::path DesktopFolder() const override { return Desktop; }
    fs::path WindowsFolder() const override { return Windows; }

    std::optional<LinkContent> Link(const fs::path& path) const override {
        std::ifstream file(path);
        std::string target;
        std::string description;
        return std::getline(file, target) && std::getline(file, description)
                   ? std::optional(LinkContent{target, description})
                   : std::nullopt;
    }
    bool StoreLink(const fs::path& path, const LinkContent& link) override {
        Stored.push_back(link);
        std::ofstream file(path);
        file << link.Target.string() << '\n' << link.Description << '\n';
        return static_cast<bool>(file.flush());
    }
    void FileTypesChanged() override { ++Changes; }

    fs::path Desktop;
    fs::path Windows;
    std::vector<LinkContent> Stored;
    int Changes = 0;
};

class RegistryShellTest : public ::testing::Test {
protected:
    RegistryShellTest() {
        fs::create_directory(Desktop_);
        fs::create_directories(Windows_ / "Desktop");
        Calls_.Desktop = Desktop_;
        Calls_.Windows = Windows_;
    }

    static void Put(const fs::path& path) { std::ofstream(path) << "C:\\Other.exe\nanother link\n"; }

    TempFolder Folder_;
    fs::path Desktop_ = Folder_.Path() / "desktop";
    fs::path Windows_ = Folder_.Path() / "windows";
    fs::path Link_ = Desktop_ / "Burnwick.lnk";
    fs::path Program_ = fs::path("C:") / "Burnwick" / "Burnwick.exe";
    std::unique_ptr<FakeRegistry> OwnedRegistry_ = std::make_unique<FakeRegistry>();
    std::unique_ptr<FakeShellCalls> OwnedCalls_ = std::make_unique<FakeShellCalls>();
    FakeRegistry& Registry_ = *OwnedRegistry_;
    FakeShellCalls& Calls_ = *OwnedCalls_;
    RegistryShell Shell_{std::move(OwnedRegistry_), std::move(OwnedCalls_)};
};

TEST_F(RegistryShellTest, RegistersTheFileTypeAndSaysSo) {
    Shell_.RegisterFileType(Program_);
    EXPECT_EQ(Registry_.Keys["HKCR\\.bin"][""], "Burnwick");
    EXPECT_EQ(Registry_.Keys["HKCR\\Burnwick\\shell\\open\\command"][""], Program_.string() + " %1");
    EXPECT_EQ(Calls_.Changes, 1);
    EXPECT_EQ(Shell_.AssociatedProgram(), Program_);
}

TEST_F(RegistryShellTest, TakesTheFileTypeAwayAndSaysSo) {
    Shell_.RegisterFileType(Program_);
    Shell_.UnregisterFileType();
    EXPECT_THAT(Registry_.Keys, IsEmpty());
    EXPECT_EQ(Calls_.Changes, 2);
    EXPECT_EQ(Shell_.AssociatedProgram(), "");
}

TEST_F(RegistryShellTest, KeepsAPathOfAnyLanguage) {
    const fs::path program = u8"C:/Gerät/Žluťoučký/Прошивка/Burnwick.exe";
    Shell_.RegisterFileType(program);
    EXPECT_EQ(Shell_.AssociatedProgram(), program);
}

TEST_F(RegistryShellTest, PutsALinkOnTheUsersDesktop) {
    Shell_.CreateDesktopShortcut(Program_);
    ASSERT_TRUE(Calls_.Link(Link_));
    EXPECT_EQ(Calls_.Link(Link_)->Target, Program_);
}

TEST_F(RegistryShellTest, LeavesALinkThatIsAsItShouldBe) {
    Shell_.CreateDesktopShortcut(Program_);
    Shell_.CreateDesktopShortcut(Program_);
    EXPECT_EQ(Calls_.Stored.size(), 1U);
}

TEST_F(RegistryShellTest, LetsTheLinkFollowAProgramThatHasMoved) {
    Shell_.CreateDesktopShortcut("C:\\before\\Burnwick.exe");
    Shell_.CreateDesktopShortcut(Program_);
    EXPECT_EQ(Calls_.Link(Link_)->Target, Program_);
}

TEST_F(RegistryShellTest, PutsNoLinkWhereThereIsNoDesktop) {
    Calls_.Desktop.clear();
    Shell_.CreateDesktopShortcut(Program_);
    EXPECT_THAT(Calls_.Stored, IsEmpty());
}

TEST_F(RegistryShellTest, DeletesTheLinkOnTheSystemsDesktopWhoeverMadeIt) {
    Put(Windows_ / "Desktop" / "Burnwick.lnk");
    Shell_.DeleteDesktopShortcut();
    EXPECT_FALSE(fs::exists(Windows_ / "Desktop" / "Burnwick.lnk"));
    EXPECT_TRUE(fs::exists(Windows_ / "Desktop"));
}

TEST_F(RegistryShellTest, LeavesTheLinkOnTheUsersDesktopToTheUser) {
    Shell_.CreateDesktopShortcut(Program_);
    Shell_.DeleteDesktopShortcut();
    EXPECT_TRUE(fs::exists(Link_));
}

TEST_F(RegistryShellTest, DeletesNothingInTheFolderThatItRunsInWhereTheSystemHasNone) {
    Put(Windows_ / "Desktop" / "Burnwick.lnk");
    Calls_.Windows.clear();
    const auto before = fs::current_path();
    fs::current_path(Windows_);
    Shell_.DeleteDesktopShortcut();
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(Windows_ / "Desktop" / "Burnwick.lnk"));
}

TEST_F(RegistryShellTest, ALinkThatIsNotThereIsNoError) {
    Shell_.DeleteDesktopShortcut();
    EXPECT_FALSE(fs::exists(Link_));
}

TEST(DesktopShellTest, IsThereOnEverySystem) {
    EXPECT_NE(DesktopShell(), nullptr);
}

}  // namespace
}  // namespace burnwick::test
