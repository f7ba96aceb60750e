// The recent files in the menu, and images that are dropped on the window.
#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <filesystem>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

}  // namespace

class frmMainRecent : public WindowTest {
protected:
    std::vector<std::string> Entries() const {
        std::vector<std::string> captions;
        for (const char* const name : {"mnuFileMRF_1", "mnuFileMRF_2", "mnuFileMRF_3", "mnuFileMRF_4"}) {
            if (Find<QAction>(name)->isVisible()) {
                captions.push_back(Find<QAction>(name)->text().toStdString());
            }
        }
        return captions;
    }
    // Drags this over the window; true when it would be taken, and then drops it.
    bool Drop(const QList<QUrl>& urls) const {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Window.get(), &enter);
        if (enter.isAccepted()) {
            QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(Window.get(), &drop);
            QCoreApplication::processEvents();
        }
        return enter.isAccepted();
    }
    bool Drop(const std::string& path) const {
        return Drop({QUrl::fromLocalFile(QString::fromStdString(path))});
    }
};

TEST_F(frmMainRecent, NeitherEntryNorSeparatorIsShownWithoutAny) {
    Start();
    EXPECT_THAT(Entries(), IsEmpty());
    EXPECT_FALSE(Find<QAction>("mnuFileMRFSeparator")->isVisible());
}

TEST_F(frmMainRecent, EntriesAreShownBehindASeparator) {
    Settings["LastOpenFile/1"] = "/a.bin";
    Settings["LastOpenFile/3"] = "/c & d.bin";
    Start();
    EXPECT_THAT(Entries(), ElementsAre("&1 /a.bin", "&3 /c && d.bin"));
    EXPECT_TRUE(Find<QAction>("mnuFileMRFSeparator")->isVisible());
}

TEST_F(frmMainRecent, AnEntryIsProgrammedWithoutADialog) {
    ConnectUnitOfSize(ImageSize);
    Settings["LastOpenFile/2"] = Image("this & that.bin");
    Start();
    Trigger("mnuFileMRF_2");
    EXPECT_THAT(Display(), StartsWith("Opening " + Image("this & that.bin") + "..."));
    EXPECT_EQ(Status(), Programmed);
    EXPECT_THAT(Entries(), ElementsAre("&1 " + (Folder / "this && that.bin")));
}

TEST_F(frmMainRecent, AChoiceIsUsedUpByItsRun) {
    ConnectUnitOfSize(ImageSize);
    Settings["LastOpenFile/1"] = Image();
    Start();
    Trigger("mnuFileMRF_1");
    User.Escape();
    Click("cmdDownload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File"));
}

TEST_F(frmMainRecent, AnEntryThatIsGoneIsToldAndStays) {
    Settings["LastOpenFile/1"] = "/gone/unit.bin";
    Start();
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileMRF_1");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Caption, "File Not Found");
    EXPECT_EQ(
        User.Boxes().front().Text,
        "\"/gone/unit.bin\" could not be found.\nCheck the spelling of the file, and verify that the file "
        "location is correct.");
    EXPECT_EQ(User.Boxes().front().Icon, QMessageBox::Critical);
    EXPECT_THAT(Entries(), ElementsAre("&1 /gone/unit.bin"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRecent, AnEntryThatIsGoneIsNotProgrammedByTheNextDownload) {
    Settings["LastOpenFile/1"] = "/gone/unit.bin";
    Start();
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileMRF_1");
    User.Escape();
    Click("cmdDownload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File"));
}

TEST_F(frmMainRecent, AFifthFilePushesTheOldestOut) {
    for (const int i : {1, 2, 3, 4}) {
        Settings["LastOpenFile/" + std::to_string(i)] = "/" + std::to_string(i) + ".bin";
    }
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_THAT(Entries(), ElementsAre("&1 " + Image(), "&2 /1.bin", "&3 /2.bin", "&4 /3.bin"));
}

TEST_F(frmMainRecent, ACancelledDownloadIsAddedAndACancelledUploadIsNot) {
    Start();
    At(1s, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_THAT(Entries(), ElementsAre("&1 " + Image()));
    At(Loop.Time() + 1s, [this] { Click("cmdQuit"); });
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Uploading was canceled.");
    EXPECT_THAT(Entries(), ElementsAre("&1 " + Image()));
}

TEST_F(frmMainRecent, AFailedDownloadIsAdded) {
    Start();
    Download(Image());
    EXPECT_EQ(Status(), "Timeout.");
    EXPECT_THAT(Entries(), ElementsAre("&1 " + Image()));
}

TEST_F(frmMainRecent, AnImageThatIsDroppedIsProgrammed) {
    ConnectUnitOfSize(ImageSize);
    Start();
    EXPECT_TRUE(Drop(Image("dropped.bin")));
    EXPECT_EQ(Status(), Programmed);
    EXPECT_THAT(Entries(), ElementsAre("&1 " + Image("dropped.bin")));
}

TEST_F(frmMainRecent, NothingElseCanBeDropped) {
    Start();
    EXPECT_FALSE(Drop(Folder.Path().string()));
    EXPECT_FALSE(Drop(Folder / "gone.bin"));
    EXPECT_FALSE(Drop(Folder.Write("text.bin", AnyBytes(100))));
    EXPECT_FALSE(Drop({QUrl("https://example.org/unit.bin")}));
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(QString::fromStdString(Image())),
                       QUrl::fromLocalFile(QString::fromStdString(Image("other.bin")))}));
    EXPECT_FALSE(Drop(QList<QUrl>{}));
}

TEST_F(frmMainRecent, NothingCanBeDroppedDuringARun) {
    Start();
    At(1s, [this] {
        EXPECT_FALSE(Drop(Image("dropped.bin")));
        Click("cmdQuit");
    });
    Download(Image());
    EXPECT_THAT(Display(), StartsWith("Opening " + Image()));
}

}  // namespace burnwick::test
