#include "job/RefusedComparison.h"
#include "support/AnyUser.h"

// Rights as POSIX systems have them.
namespace burnwick::test {

namespace fs = std::filesystem;

TEST_F(RefusedComparison, LeavesAFileThatCannotBeLookedAtToTheComparison) {
    const auto shut = Folder.Path() / "shut";
    fs::create_directory(shut);
    const std::string inside = Folder.Write("shut/inside.bin", AnyBytes(10));
    fs::permissions(shut, fs::perms::none);
    {
        const AnyUser user;
        EXPECT_FALSE(Refuse(inside, Other)) << "why it cannot be read is told by the status";
    }
    fs::permissions(shut, fs::perms::owner_all);
}

}  // namespace burnwick::test
