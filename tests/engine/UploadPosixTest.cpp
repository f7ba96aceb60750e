#include <filesystem>

#include "support/AnyUser.h"
#include "support/LinkTest.h"
#include "support/LittleRoom.h"

// Rights and full disks, as POSIX systems have them.
namespace burnwick::test {

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace fs = std::filesystem;

using Upload = LinkTest;

TEST_F(Upload, OntoAFileThatMayNotBeDeletedSaysSo) {
    OpensTheLink = false;
    Folder.Write("upload.bin", Bytes(10));
    fs::permissions(Folder.Path(), static_cast<fs::perms>(0555));
    {
        const AnyUser user;
        RunUpload(1);
    }
    fs::permissions(Folder.Path(), fs::perms::all);
    EXPECT_THAT(Events.Messages,
                ElementsAre("Error: " + UploadPath() + " cannot be deleted (Permission denied)."));
    EXPECT_THAT(ReadFile(UploadPath()), SizeIs(10));
}

TEST_F(Upload, OntoAFullDiskSaysSoAndLeavesNoFile) {
    AgreesOn(UploadMode, Speed57600);
    Unit.GivesBlocks(0, 4);
    {
        const LittleRoom disk(768);
        RunUpload(10);
    }
    EXPECT_EQ(Events.Messages.back(), "Error: Cannot write to " + UploadPath() + " (File too large).");
    EXPECT_FALSE(fs::exists(UploadPath()));
}

}  // namespace burnwick::test
