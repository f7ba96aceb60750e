// The copy commands and folders that take no file.
#include "gui/CopyTest.h"
#include "support/AnyUser.h"
#include "support/LittleRoom.h"

namespace burnwick::test {

using ::testing::StartsWith;

class frmMainCopyTroublePosix : public CopyTest {};

TEST_F(frmMainCopyTroublePosix, AFolderThatMayNotBeWrittenIsTold) {
    Show(Image());
    Folder.Write("to/other.bin", Old_);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Ok);
    {
        const AnyUser user;
        Trigger("mnuFileCopyToFolder");
    }
    ExpectCopyError("The copy cannot be written: Permission denied.");
    EXPECT_EQ(FilesThere(), 1);
    ExpectUsable();
}

TEST_F(frmMainCopyTroublePosix, AFullDiskLeavesTheOldFile) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Yes);
    User.ClickInBox(QMessageBox::Ok);
    {
        const LittleRoom little(100'000);
        Trigger("mnuFileCopyToFolder");
    }
    ASSERT_EQ(User.Boxes().size(), 2U);
    ExpectCopyError(User.Boxes().back().More);
    EXPECT_THAT(User.Boxes().back().More, StartsWith("The copy cannot be written: "));
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), Old_);
    EXPECT_EQ(FilesThere(), 1);
    ExpectUsable();
}

}  // namespace burnwick::test
