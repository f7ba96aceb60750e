// The ways to leave the window, and what a run makes of them.
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWindow>
#include <filesystem>
#include <fstream>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::HasSubstr;

}  // namespace

using frmMainClose = WindowTest;

TEST_F(frmMainClose, CloseIsGreyedWhileBlocksAreSent) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Waiting", [this] { EXPECT_FALSE(CloseIsGreyed()); });
    WhenStatus("Sending block", [this] {
        EXPECT_TRUE(CloseIsGreyed());
        Window->close();  // the window manager's own way
        EXPECT_TRUE(Window->isVisible());
    });
    Download(Image());
    EXPECT_FALSE(CloseIsGreyed());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainClose, IsRefusedWithItsReasonWhileBlocksAreSentWhateverCloseShowsAndNotDoneLater) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::Yes);
    Settings["Options/Verify"] = "0";
    WhenStatus("Sending block 300", [this] {
        EXPECT_FALSE(CloseIsGreyed());
        Beeps = 0;
        Window->close();
        EXPECT_EQ(Beeps, 1);
        EXPECT_THAT(QToolTip::text().toStdString(), HasSubstr("The unit is being programmed"));
    });
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_TRUE(Window->isVisible());
    QToolTip::hideText();
}

TEST_F(frmMainClose, AProgramThatIsEndedCancelsTheSendingOfBlocks) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 300", [this] { Window->Unload(); });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(frmMainClose, AKeyHeldDownOrADoubleClickOnCancelDoesNotLeaveTheProgram) {
    Start();
    At(3s, [this] {
        auto* const cancel = Find<QPushButton>("cmdQuit");
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", /*autorep=*/true);
        QApplication::sendEvent(cancel, &held);
        EXPECT_EQ(cancel->text(), "&Cancel");
        Click("cmdQuit");
        QTest::mouseDClick(cancel, Qt::LeftButton);
    });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    EXPECT_TRUE(Window->isVisible());
}

TEST_F(frmMainClose, CloseStaysGreyedAfterAVerifiedDownloadUntilTheNextOne) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_TRUE(CloseIsGreyed());
    Settings["Options/Verify"] = "0";
    WhenStatus("Sending block", [this] { EXPECT_FALSE(CloseIsGreyed()); });
    Download(Image());
    EXPECT_TRUE(CloseIsGreyed());
}

TEST_F(frmMainClose, QuitLeavesAlsoWhileCloseIsGreyed) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::Yes);
    Window->close();
    EXPECT_TRUE(Window->isVisible());
    Click("cmdQuit");
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(frmMainClose, AFileThatIsRefusedBeforeTheLineDoesNotTouchClose) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    // An image by its type code, of a length that no chip has.
    Download(Folder.Write("odd.bin", SampleImage(1000)));
    EXPECT_THAT(Display(), HasSubstr("Error: Invalid file size."));
    EXPECT_FALSE(CloseIsGreyed());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainClose, ClosingTheWindowWhileWaitingCancelsAndClosesAtTheEnd) {
    Start();
    At(3s, [this] {
        Window->close();
        EXPECT_TRUE(Window->isVisible());
    });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainClose, ClosingTheWindowDuringAnUploadCancelsItAndLeavesNoFile) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Reading block 200", [this] { Window->close(); });
    Upload(1, Folder / "read.bin");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(fs::exists(Folder / "read.bin"));
}

TEST_F(frmMainClose, ASecondQuitWhileARunWindsDownClosesAtItsEnd) {
    Start();
    At(3s, [this] {
        Click("cmdQuit");
        Click("cmdQuit");
        EXPECT_TRUE(Window->isVisible());
    });
    Download(Image());
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(frmMainClose, AProgramThatIsEndedLeavesThroughAllItsDialogs) {
    const auto log = Folder.Path() / "home/Burnwick.log";
    std::ofstream(log) << "C:\\unit.bin\r\n";
    Start();
    User.Next([](QDialog& viewer) {
        QTest::mouseClick(viewer.findChild<QPushButton*>("cmdClear"), Qt::LeftButton);
    });
    User.Next([this](QDialog& question) {
        EXPECT_EQ(question.windowTitle(), "Clear Activity Log");
        Window->Unload();
    });
    Trigger("mnuToolViewLog");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_TRUE(fs::exists(log)) << "nobody has said Yes";
}

TEST_F(frmMainClose, AProgramThatIsEndedLeavesAComparison) {
    Start();
    User.Next([this](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("txtFile1")->setText(QString::fromStdString(Image("one.bin")));
        dialog.findChild<QLineEdit*>("txtFile2")->setText(QString::fromStdString(Image("two.bin")));
        QTimer::singleShot(0, Window.get(), [this] { Window->Unload(); });
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCompare"), Qt::LeftButton);
    });
    Trigger("mnuFileCompareFiles");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Beeps, 0) << "it has no result";
}

}  // namespace burnwick::test
