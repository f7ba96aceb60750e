#include "platform/files/RuntimeFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/EnvironmentVariable.h"
#include "support/TempFolder.h"

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;

constexpr uid_t AnotherUser = 65534;

class RuntimeFolderTest : public testing::Test {
protected:
    RuntimeFolderTest() { mkdir(Given_.c_str(), S_IRWXU); }

    bool IsBesideTheTemporaryFiles() const { return RuntimeFolder() == Own_; }

    TempFolder Temporary_;
    fs::path Given_ = Temporary_.Path() / "given";
    fs::path Own_ = Temporary_.Path() / ("burnwick-" + std::to_string(geteuid()));
    EnvironmentVariable Runtime_{"XDG_RUNTIME_DIR", Given_.string()};
    EnvironmentVariable ForTemporaryFiles_{"TMPDIR", Temporary_.Path().string()};
};

TEST_F(RuntimeFolderTest, IsTheSessionsOwn) {
    EXPECT_EQ(RuntimeFolder(), Given_);
}

TEST_F(RuntimeFolderTest, IsMadeForTheUserAloneWhereTheSessionHasNone) {
    const EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
    EXPECT_TRUE(IsBesideTheTemporaryFiles());
    EXPECT_EQ(fs::status(Own_).permissions(), fs::perms::owner_all);
    EXPECT_TRUE(IsBesideTheTemporaryFiles());
}

TEST_F(RuntimeFolderTest, IsNotOneThatOthersMayEnter) {
    fs::permissions(Given_, fs::perms::group_exec, fs::perm_options::add);
    EXPECT_TRUE(IsBesideTheTemporaryFiles());
}

TEST_F(RuntimeFolderTest, IsNotOneOfAnotherUser) {
    if (chown(Given_.c_str(), AnotherUser, AnotherUser) != 0) {
        GTEST_SKIP() << "needs root";
    }
    EXPECT_TRUE(IsBesideTheTemporaryFiles());
}

TEST_F(RuntimeFolderTest, IsNoneWhenAnotherUserHasMadeIt) {
    fs::remove(Given_);
    mkdir(Own_.c_str(), S_IRWXU);
    if (chown(Own_.c_str(), AnotherUser, AnotherUser) != 0) {
        GTEST_SKIP() << "needs root";
    }
    EXPECT_EQ(RuntimeFolder(), "");
}

TEST_F(RuntimeFolderTest, IsNoneWhenALinkIsInItsPlace) {
    fs::create_directory_symlink(Given_, Own_);
    const EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
    EXPECT_EQ(RuntimeFolder(), "");
}

TEST_F(RuntimeFolderTest, IsNoneWhereNoneCanBeMade) {
    const EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
    const EnvironmentVariable nowhere("TMPDIR", Temporary_ / "nowhere");
    EXPECT_EQ(RuntimeFolder(), "");
}

}  // namespace
}  // namespace burnwick::test
