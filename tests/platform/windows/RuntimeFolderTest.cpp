#include "platform/files/RuntimeFolder.h"

#include <gtest/gtest.h>

#include "ForeignFolder.h"
#include "WideVariable.h"
#include "platform/files/windows/UserFolders.h"

#include <shlobj.h>

namespace burnwick::test {
namespace {

namespace fs = std::filesystem;

TEST(RuntimeFolderTest, IsMadeInTheUsersProfile) {
    const auto folder = RuntimeFolder();
    EXPECT_TRUE(fs::is_directory(folder));
    const auto inProfile = fs::relative(folder, KnownFolder(FOLDERID_Profile));
    EXPECT_FALSE(inProfile.empty());
    EXPECT_NE(*inProfile.begin(), "..");
    EXPECT_EQ(RuntimeFolder(), folder);
}

TEST(RuntimeFolderTest, IsNotTheOneThatTheEnvironmentNames) {
    const ForeignFolder named;
    const WideVariable data(L"LOCALAPPDATA", named.Path().native());
    EXPECT_NE(RuntimeFolder().parent_path().parent_path(), named.Path());
}

}  // namespace
}  // namespace burnwick::test
