// The copy commands and folders that take no file.
#include <QFileDialog>
#include <QLabel>
#include <algorithm>
#include <filesystem>

#include "gui/CopyTest.h"
#include "support/AnyUser.h"
#include "support/LittleRoom.h"

namespace burnwick::test {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

// A folder below this one whose path has so many characters.
fs::path DeepFolder(fs::path folder, std::size_t length) {
    constexpr std::size_t longestName = 250;
    while (folder.string().size() + 2 <= length) {
        std::size_t name = std::min(longestName, length - folder.string().size() - 1);
        // What is left has to be a name, too.
        name -= length - folder.string().size() - 1 - name == 1 ? 1 : 0;
        folder /= std::string(name, 'd');
    }
    fs::create_directories(folder);
    return folder;
}

}  // namespace

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

TEST_F(frmMainCopyTroublePosix, AFolderThatVanishesWhileItIsChosenIsTold) {
    Show(Image());
    User.Next([this](QDialog& dialog) {
        dynamic_cast<QFileDialog&>(dialog).setDirectory(QString::fromStdString(To_.string()));
        fs::remove(To_);
        dialog.done(QDialog::Accepted);
    });
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The folder cannot be read: No such file or directory.");
    ExpectUsable();
}

TEST_F(frmMainCopyTroublePosix, ANameMayHoldAnything) {
    for (const char* const name : {"<b>this & that.bin", "line\nbreak.bin", " \xC3\xBC .bin"}) {
        ExpectCopiesOfAnImageNamed(name);
    }
}

TEST_F(frmMainCopyTroublePosix, MarkUpInANameIsText) {
    Show(Image("<img src=x>.bin"));
    Folder.Write("to/<img src=x>.bin", Old_);
    User.TypeFile(To_.string());
    User.Next([](QDialog& dialog) {
        for (const auto* const label : dialog.findChildren<QLabel*>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        }
        dialog.reject();
    });
    Trigger("mnuFileCopyToFolder");
}

TEST_F(frmMainCopyTroublePosix, PathsOfFourThousandCharactersAreNoHindrance) {
    constexpr std::size_t longPath = 4000;
    const auto from = DeepFolder(Folder.Path() / "from", longPath - std::string("/unit.bin").size());
    const auto to = DeepFolder(To_, longPath);
    ASSERT_EQ(to.string().size(), longPath);
    fs::copy_file(Image(), from / "unit.bin");
    Show((from / "unit.bin").string());
    CopyTo(to);
    EXPECT_THAT(User.Boxes(), IsEmpty());
    EXPECT_EQ(ReadFile(to / "unit.bin"), SampleImage(ImageSize));
    fs::remove(from / "unit.bin");
    User.TypeFile(to.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The file cannot be read: No such file or directory.");
    ExpectUsable();
}

TEST_F(frmMainCopyTroublePosix, AFileInOtherLettersIsAnotherFile) {
    Show(Image());
    Folder.Write("to/UNIT.BIN", Old_);
    CopyTo(To_);
    EXPECT_THAT(User.Boxes(), IsEmpty());
    EXPECT_EQ(ReadFile(To_ / "UNIT.BIN"), Old_);
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), SampleImage(ImageSize));
}

}  // namespace burnwick::test
