// The copy commands: the image of the summary as a line of text, and as a file in another folder.
#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMimeData>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "gui/CopyTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::StartsWith;

void WrittenAt(const fs::path& file, int year, int hour) {
    std::tm moment{};
    moment.tm_year = year - 1900;
    moment.tm_mon = 6;
    moment.tm_mday = 2;
    moment.tm_hour = hour;
    moment.tm_min = 5;
    moment.tm_sec = 9;
    moment.tm_isdst = -1;
    fs::last_write_time(file, std::chrono::file_clock::from_sys(
                                  std::chrono::system_clock::from_time_t(std::mktime(&moment))));
}

}  // namespace

class frmMainCopy : public CopyTest {};

TEST_F(frmMainCopy, BothCommandsAreDisabledAtTheStart) {
    Start();
    EXPECT_FALSE(IsEnabled("mnuFileCopy"));
    EXPECT_FALSE(IsEnabled("mnuFileCopyToFolder"));
}

TEST_F(frmMainCopy, WithoutAnImageBothDoNothing) {
    Start();
    for (const char* const command : {"mnuFileCopy", "mnuFileCopyToFolder"}) {
        Find<QAction>(command)->setEnabled(true);
        Trigger(command);
    }
    EXPECT_EQ(Clipboard(), "from before");
    EXPECT_THAT(User.Dialogs(), IsEmpty());
}

TEST_F(frmMainCopy, BothAreEnabledByTheSummaryOfADownload) {
    Start();
    At(1s, [this] {
        EXPECT_FALSE(Find("mnuFile")->isEnabled()) << "during a run no menu is";
        Click("cmdQuit");
    });
    Download(Image());
    EXPECT_TRUE(IsEnabled("mnuFileCopy"));
    EXPECT_TRUE(IsEnabled("mnuFileCopyToFolder"));
}

TEST_F(frmMainCopy, BothAreDisabledBeforeAnUploadAndEnabledByWhatItHasRead) {
    simulator::UnitOptions options;
    options.Flash = SampleImage(ImageSize);
    Connect(std::move(options));
    Start();
    Download(Image());
    WhenStatus("Reading block", [this] {
        EXPECT_FALSE(IsEnabled("mnuFileCopy"));
        EXPECT_FALSE(IsEnabled("mnuFileCopyToFolder"));
    });
    Upload(1, Folder / "read.bin");
    EXPECT_TRUE(IsEnabled("mnuFileCopy"));
    EXPECT_TRUE(IsEnabled("mnuFileCopyToFolder"));
    Trigger("mnuFileCopy");
    EXPECT_THAT(Clipboard(), StartsWith("read.bin    VX-1600    4.10    "));
    CopyTo(To_);
    EXPECT_EQ(ReadFile(To_ / "read.bin"), ReadFile(Folder / "read.bin"));
}

TEST_F(frmMainCopy, AnUploadThatFailsLeavesNothingToCopy) {
    Show(Image());
    At(Loop.Time() + 1s, [this] { Click("cmdQuit"); });
    Upload(1, Folder / "read.bin");
    EXPECT_FALSE(IsEnabled("mnuFileCopy"));
    EXPECT_FALSE(IsEnabled("mnuFileCopyToFolder"));
}

TEST_F(frmMainCopy, TheLineOfAnImageWithAModelHasSevenFields) {
    Show(Image());
    Trigger("mnuFileCopy");
    EXPECT_EQ(Clipboard(),
              "unit.bin    VX-1600    4.10    5609    07/22/2004 15:05:09    English/French    256KB");
}

TEST_F(frmMainCopy, TheLineOfAnImageWithoutAModelHasSixFields) {
    Show(Folder.Write("plain.bin", AnyBytes(65'536)));
    Trigger("mnuFileCopy");
    EXPECT_EQ(Clipboard(), "plain.bin    " + TextOf("lblVersion") + "    " + TextOf("lblChecksum") + "    "
                               + TextOf("lblDateStamp") + "    " + TextOf("lblLanguage") + "    64KB");
}

TEST_F(frmMainCopy, TheLineHasTheChecksumThatIsShown) {
    Debug = true;
    Show(Image());
    Trigger("mnuFileCopy");
    EXPECT_EQ(TextOf("lblChecksum").size(), 7U);
    EXPECT_THAT(Clipboard(), StartsWith("unit.bin    VX-1600    4.10    " + TextOf("lblChecksum") + "    "));
}

TEST_F(frmMainCopy, TheLineTakesThePlaceOfAllThatWasOnTheClipboard) {
    auto* const data = new QMimeData;
    data->setHtml("<b>from before</b>");
    QGuiApplication::clipboard()->setMimeData(data);
    Show(Image());
    Trigger("mnuFileCopy");
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasHtml());
    EXPECT_THAT(Clipboard(), StartsWith("unit.bin    "));
}

TEST_F(frmMainCopy, TheSummarysImageIsMeantWhenAnotherFileWasNotTaken) {
    Show(Image());
    User.Escape();
    Click("cmdDownload");
    Trigger("mnuFileCopy");
    EXPECT_THAT(Clipboard(), StartsWith("unit.bin    VX-1600"));
    Download(Folder.Write("other.bin", AnyBytes(100)));
    EXPECT_EQ(Status(), "Invalid file format.");
    Trigger("mnuFileCopy");
    EXPECT_THAT(Clipboard(), StartsWith("unit.bin    VX-1600"));
    CopyTo(To_);
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), SampleImage(ImageSize));
}

TEST_F(frmMainCopy, AFolderIsAskedForByTheImagesName) {
    Show(Image());
    User.Next([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).fileMode(), QFileDialog::Directory);
        dialog.reject();
    });
    Trigger("mnuFileCopyToFolder");
    EXPECT_EQ(User.Dialogs().back(), "Copy unit.bin to...");
}

TEST_F(frmMainCopy, ACancelledFolderChoiceChangesNothing) {
    Show(Image());
    User.Escape();
    Trigger("mnuFileCopyToFolder");
    EXPECT_EQ(FilesThere(), 0);
    EXPECT_THAT(User.Boxes(), IsEmpty());
    ExpectUsable();
}

TEST_F(frmMainCopy, AFileGoesIntoAnEmptyFolderWithoutAQuestion) {
    Show(Image());
    CopyTo(To_);
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), SampleImage(ImageSize));
    EXPECT_EQ(FilesThere(), 1);
    EXPECT_THAT(User.Boxes(), IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(frmMainCopy, AFileOfTheSameNameIsAskedAbout) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    WrittenAt(To_ / "unit.bin", 2004, 9);
    WrittenAt(Folder / "unit.bin", 2012, 15);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::No);
    Trigger("mnuFileCopyToFolder");
    ASSERT_EQ(User.Boxes().size(), 1U);
    const auto& box = User.Boxes().front();
    EXPECT_EQ(box.Caption, "Confirm File Replace");
    EXPECT_EQ(box.Text,
              "This folder already contains a file named 'unit.bin'    \n"
              " \n"
              "Existing file:  1,536KB, 07/02/2004 9:05:09\n"
              "Copying file: 256KB, 07/02/2012 15:05:09\n"
              "\n"
              "Would you like to replace the existing file?");
    EXPECT_EQ(box.Icon, QMessageBox::Warning);
    EXPECT_EQ(box.Buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.Default, "No");
}

TEST_F(frmMainCopy, OnNoOrEscapeTheOldFileStays) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::No);
    Trigger("mnuFileCopyToFolder");
    User.TypeFile(To_.string());
    User.Escape();
    Trigger("mnuFileCopyToFolder");
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), Old_);
    EXPECT_EQ(FilesThere(), 1);
    EXPECT_EQ(User.Boxes().size(), 2U) << "and nothing more is said";
}

TEST_F(frmMainCopy, OnYesTheOldFileIsReplaced) {
    Show(Image());
    Folder.Write("to/unit.bin", Old_);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Yes);
    Trigger("mnuFileCopyToFolder");
    EXPECT_EQ(ReadFile(To_ / "unit.bin"), SampleImage(ImageSize));
    EXPECT_EQ(FilesThere(), 1);
    EXPECT_EQ(User.Boxes().size(), 1U);
}

TEST_F(frmMainCopy, IntoTheImagesOwnFolderItAsksAndLosesNothing) {
    Show(Image());
    std::filesystem::create_hard_link(Folder / "unit.bin", Folder / "twin.bin");
    User.TypeFile(Folder.Path().string());
    User.ClickInBox(QMessageBox::Yes);
    Trigger("mnuFileCopyToFolder");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Caption, "Confirm File Replace");
    EXPECT_TRUE(std::filesystem::equivalent(Folder / "unit.bin", Folder / "twin.bin"));
    EXPECT_EQ(ReadFile(Folder / "unit.bin"), SampleImage(ImageSize));
}

}  // namespace burnwick::test
