#include <filesystem>

#include "ports/PortTableTest.h"
#include "support/TempFolder.h"

// Links to devices, as POSIX systems have them.
namespace burnwick::test {

TEST_F(PortTable, FindsTheNumberOfADevicePathThroughALink) {
    const TempFolder folder;
    std::filesystem::create_symlink("/dev/null", folder.Path() / "by-id");
    Own[9] = "/dev/null";
    const auto choice = ParsePortChoice(folder / "by-id", Devices);
    EXPECT_EQ(choice->Number, 9);
    EXPECT_EQ(choice->Device, folder / "by-id");
}

}  // namespace burnwick::test
