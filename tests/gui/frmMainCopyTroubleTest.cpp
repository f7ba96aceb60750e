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

constexpr std::size_t Size = 262'144;

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

class frmMainCopyTrouble : public CopyTest {};

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

TEST_F(frmMainCopyTrouble, AFolderThatVanishesWhileItIsChosenIsTold) {
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

TEST_F(frmMainCopyTrouble, ANameMayHoldAnything) {
    for (const char* const name :
         {"<b>this & that.bin", "line\nbreak.bin", "'quoted'.bin", "%1 %s.bin", " \xC3\xBC .bin"}) {
        const fs::path to = To_ / "each";
        fs::create_directory(to);
        Settings["LastOpenFile/1"] = Image(name);
        Window.reset();
        Start();
        At(Loop.Time() + 1s, [this] { Click("cmdQuit"); });
        Trigger("mnuFileMRF_1");
        std::string shown = name;
        std::replace(shown.begin(), shown.end(), '\n', ' ');
        Trigger("mnuFileCopy");
        EXPECT_THAT(Clipboard(), StartsWith(shown + "    VX-1600    "));
        CopyTo(to);
        EXPECT_EQ(User.Dialogs().back(), "Copy " + shown + " to...");
        EXPECT_EQ(ReadFile(to / name), SampleImage(Size)) << name;
        User.TypeFile(to.string());
        User.ClickInBox(QMessageBox::Yes);
        Trigger("mnuFileCopyToFolder");
        EXPECT_THAT(User.Boxes().back().Text,
                    StartsWith("This folder already contains a file named '" + shown + "'    \n \n"));
        fs::remove_all(to);
    }
}

TEST_F(frmMainCopyTrouble, MarkUpInANameIsText) {
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

TEST_F(frmMainCopyTrouble, PathsOfFourThousandCharactersAreNoHindrance) {
    constexpr std::size_t longPath = 4000;
    const auto from = DeepFolder(Folder.Path() / "from", longPath - std::string("/unit.bin").size());
    const auto to = DeepFolder(To_, longPath);
    ASSERT_EQ(to.string().size(), longPath);
    fs::copy_file(Image(), from / "unit.bin");
    Show((from / "unit.bin").string());
    CopyTo(to);
    EXPECT_THAT(User.Boxes(), IsEmpty());
    EXPECT_EQ(ReadFile(to / "unit.bin"), SampleImage(Size));
    fs::remove(from / "unit.bin");
    User.TypeFile(to.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The file cannot be read: No such file or directory.");
    ExpectUsable();
}

}  // namespace burnwick::test
