// The copy commands and bad input: each time a clear message, nothing lost, and the window usable afterwards.
#include <QFileDialog>
#include <QLabel>
#include <QScreen>
#include <algorithm>
#include <filesystem>

#include "gui/CopyTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::StartsWith;

}  // namespace

class frmMainCopyTrouble : public CopyTest {};

TEST_F(frmMainCopyTrouble, ANameMayMeanSomethingToOthers) {
    for (const char* const name : {"this & that.bin", "'quoted'.bin", "%1 %s.bin", " \xC3\xBC.bin"}) {
        ExpectCopiesOfAnImageNamed(name);
    }
}

TEST_F(frmMainCopyTrouble, AFolderOfTheImagesNameIsTold) {
    Show(Image());
    fs::create_directory(To_ / "unit.bin");
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("What has this name in the folder is a folder.");
    EXPECT_TRUE(fs::is_directory(To_ / "unit.bin"));
    ExpectUsable();
}

TEST_F(frmMainCopyTrouble, AnImageThatHasVanishedIsToldAndTheOldFileStays) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    fs::remove(Folder / "unit.bin");
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The file cannot be read: No such file or directory.");
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), Old_);
    ExpectUsable();
}

TEST_F(frmMainCopyTrouble, AnImageThatVanishesBehindTheQuestionIsTold) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    User.TypeFile(To_.string());
    User.Next([this](QDialog& dialog) {
        fs::remove(Folder / "unit.bin");
        dialog.done(QMessageBox::Yes);
    });
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The file cannot be read: No such file or directory.");
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), Old_);
    ExpectUsable();
}

TEST_F(frmMainCopyTrouble, AnImageThatHasBecomeAFolderIsTold) {
    Show(Image());
    fs::remove(Folder / "unit.bin");
    fs::create_directory(Folder / "unit.bin");
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The file cannot be read: it is a folder.");
    EXPECT_EQ(FilesThere(), 0);
    ExpectUsable();
}

TEST_F(frmMainCopyTrouble, ALongNameDoesNotPushTheButtonsOffTheScreen) {
    const std::string name = std::string(251, 'x') + ".bin";
    Show(Image(name));
    Folder.Write("to/" + name, Old_);
    User.TypeFile(To_.string());
    User.Next([](QDialog& dialog) {
        EXPECT_LE(dialog.width(), dialog.screen()->availableGeometry().width());
        dialog.reject();
    });
    Trigger("mnuFileCopyToFolder");
}

}  // namespace burnwick::test
