// A run from the click to its result.
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <filesystem>
#include <stdexcept>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using simulator::Fault;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

}  // namespace

class frmMainRun : public WindowTest {
protected:
    bool VerificationFileIsThere() const { return fs::exists(Folder / "home/Verify.tmp"); }
};

TEST_F(frmMainRun, ADownloadProgramsTheUnit) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(Caption(), "Burnwick - Programming was completed successfully");
    EXPECT_EQ(BarText(), "100%");
    EXPECT_EQ(Unit->Flash(), SampleImage(ImageSize));
    EXPECT_EQ(Beeps, 1);
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AnUploadReadsTheUnit) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Uploading was completed successfully.");
    EXPECT_EQ(ReadFile(Folder / "read.bin"), Unit->Flash());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AnUploadOfANameWithoutAnExtensionGetsOne) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Upload(1, Folder / "read");
    EXPECT_TRUE(fs::exists(Folder / "read.bin"));
}

TEST_F(frmMainRun, AnUploadAsksBeforeItReplacesAFile) {
    Start();
    const std::string file = Folder.Write("read.bin", AnyBytes(10));
    User.Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    User.TypeFile(file);
    User.ClickInBox(QMessageBox::No);
    User.Escape();  // the save dialog is back
    Click("cmdUpload");
    EXPECT_EQ(ReadFile(file), AnyBytes(10));
}

TEST_F(frmMainRun, TheMenuStartsADownloadLikeTheButton) {
    Start();
    User.Escape();
    Trigger("mnuFileDownload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File"));
}

TEST_F(frmMainRun, TheMenuStartsAnUploadLikeTheButton) {
    Start();
    User.Escape();
    Trigger("mnuFileUpload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Select Chip Size"));
}

TEST_F(frmMainRun, ACancelledOpenDialogLeavesTheWindowIdleAndWritesNothing) {
    Start();
    Stored.clear();
    User.Escape();
    Click("cmdDownload");
    EXPECT_TRUE(IsIdle());
    EXPECT_THAT(Stored, IsEmpty());
    EXPECT_EQ(Status(), "Ready on COM1 (115200bps).");
}

TEST_F(frmMainRun, ACancelledSaveDialogLeavesTheWindowIdleAndWritesTheChipSizeOnly) {
    Start();
    Stored.clear();
    User.Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    User.Escape();
    Click("cmdUpload");
    EXPECT_TRUE(IsIdle());
    EXPECT_THAT(Stored, ElementsAre("ChipSelect/UploadChipSize=2"));
}

TEST_F(frmMainRun, ACancelledChipSizeDialogEndsTheUploadWithoutAnyVisibleChange) {
    Start();
    const auto shown = [this] {
        return std::vector{Caption(), Status(), Display(), BarText(), TextOf("lblTiming")};
    };
    const auto before = shown();
    User.Escape();
    Click("cmdUpload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Select Chip Size"));
    EXPECT_EQ(shown(), before);
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, ARunDisablesEveryCommandAndTurnsQuitIntoCancel) {
    Start();
    At(3s, [this] {
        EXPECT_FALSE(Find("cmdDownload")->isEnabled());
        EXPECT_FALSE(Find("cmdUpload")->isEnabled());
        EXPECT_FALSE(Find("mnuFile")->isEnabled());
        EXPECT_FALSE(Find("mnuTools")->isEnabled());
        EXPECT_FALSE(Find("mnuHelp")->isEnabled());
        EXPECT_EQ(Find<QPushButton>("cmdQuit")->text(), "&Cancel");
        EXPECT_EQ(Window->focusWidget(), Find("cmdQuit"));
        EXPECT_EQ(Status(), "Waiting for response from Multiplexer...");
        Click("cmdQuit");
        EXPECT_EQ(Find<QPushButton>("cmdQuit")->text(), "&Quit");
    });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, RemembersTheImagesFolder) {
    Start();
    At(1s, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_EQ(Settings["Path/LastPath"], Folder.Path().string());
}

TEST_F(frmMainRun, IsMarkedAsProgrammingFromItsFirstBlockToItsEnd) {
    ConnectUnitOfSize(ImageSize);
    Start();
    EXPECT_EQ(Settings["Status/Programming"], "No");
    WhenStatus("Sending block", [this] { EXPECT_EQ(Settings["Status/Programming"], "Yes"); });
    Download(Image());
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainRun, IsNotMarkedAnyMoreAfterATimeout) {
    Start();
    Settings["Status/Programming"] = "Yes";
    Download(Image());
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainRun, IsNotMarkedAnyMoreAfterTheUnitHasDied) {
    ConnectUnitOfSize(ImageSize, {{Fault::Dead, 10}});
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainRun, KeepsTheComputerAwake) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block", [this] { EXPECT_EQ(AwakeNow, 1); });
    Download(Image());
    EXPECT_EQ(AwakeNow, 0);
}

TEST_F(frmMainRun, AsksForAVerificationWhenTheOptionIsSet) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::No);
    ASSERT_EQ(User.Boxes().size(), 1U);
    const auto& box = User.Boxes().front();
    EXPECT_EQ(box.Caption, "Verification");
    EXPECT_EQ(box.Text, "\tDo you want to verify the last programming?");
    EXPECT_EQ(box.Icon, QMessageBox::Information);
    EXPECT_EQ(box.Buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.Default, "Yes");
}

TEST_F(frmMainRun, WithNoToTheVerificationGoesStraightToItsEnd) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::No);
    EXPECT_EQ(Status(), Programmed);
    EXPECT_THAT(Display(), Not(HasSubstr("power off")));
    EXPECT_THAT(LogText(), Not(HasSubstr("Verification:")));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, DoesNotAskForAVerificationWithoutTheOption) {
    ConnectUnitOfSize(ImageSize);
    Start();
    for (const char* const option : {"", "0", "Yes", "11", "&1"}) {
        Settings["Options/Verify"] = option;
        Download(Image());
        EXPECT_THAT(User.Boxes(), IsEmpty()) << option;
    }
}

TEST_F(frmMainRun, DoesNotAskForAVerificationAfterAFailure) {
    ConnectUnitOfSize(ImageSize, {{Fault::NoAnswer, 100}});
    Settings["Options/Verify"] = "1";
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Caption, "Transmitting Error");
}

TEST_F(frmMainRun, DoesNotAskForAVerificationAfterACancel) {
    Settings["Options/Verify"] = "1";
    Start();
    At(3s, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_THAT(User.Boxes(), IsEmpty());
}

TEST_F(frmMainRun, VerifiesByReadingTheUnitBack) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_EQ(Unit->Journal().BlocksSent, 1024);
    EXPECT_THAT(Display(), EndsWith("Verifying was successfully.\n"));
    EXPECT_THAT(LogText(), HasSubstr("Verification: Verifying was successfully.\r\n"));
    EXPECT_FALSE(VerificationFileIsThere());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AMismatchOfThreeBytesStillEndsAsASuccessfulProgramming) {
    ConnectUnitOfSize(ImageSize, ThreeWrongBytes());
    Start();
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_THAT(Display(), EndsWith("Verifying error: 3 bytes are different.\n"));
    EXPECT_THAT(LogText(), HasSubstr("Verification: Verifying error: 3 bytes are different.\r\n"));
    EXPECT_EQ(Caption(), "Burnwick - Programming was completed successfully");
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(BarText(), "100%");
    EXPECT_FALSE(VerificationFileIsThere());
}

TEST_F(frmMainRun, AVerificationCanBeCancelledWhileItReads) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Verifying block 400", [this] {
        EXPECT_TRUE(Find("cmdQuit")->isEnabled());
        Click("cmdQuit");
    });
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_THAT(Display(), EndsWith("Uploading was canceled.\nVerifying was canceled.\n"));
    EXPECT_EQ(Caption(), "Burnwick - Programming was completed successfully");
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(BarText(), "100%");
    EXPECT_FALSE(VerificationFileIsThere());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AVerificationThatFailsWritesNoResult) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Verifying block 400", [this] { PullOut(); });
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_THAT(Display(), EndsWith(" \nTransmitting error.\n"));
    EXPECT_EQ(Status(), Programmed);
    EXPECT_FALSE(VerificationFileIsThere());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, ATransmittingErrorIsShownInABox) {
    ConnectUnitOfSize(ImageSize, {{Fault::NoAnswer, 500}});
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Caption, "Transmitting Error");
    EXPECT_EQ(User.Boxes().front().Text,
              "There is a communication error.        \nCheck the serial cable and try again.");
    EXPECT_EQ(User.Boxes().front().Icon, QMessageBox::Warning);
    EXPECT_EQ(Status(), "Transmitting error.");
    EXPECT_EQ(Caption(), "Burnwick - Transmitting error");
    EXPECT_THAT(LogText(), EndsWith("Status: Transmitting error.\r\n"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, APortThatDoesNotOpenIsExplainedBelowTheMessage) {
    PortTrouble =
        CommError{CommErrorNumber::NotPermitted,
                  "/dev/ttyS0: permission denied: add yourself to the group that owns it (dialout)"};
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();
    Click("cmdDownload");
    ASSERT_EQ(User.Boxes().size(), 1U);
    const auto& box = User.Boxes().front();
    EXPECT_EQ(box.Caption, "CommPort Error");
    EXPECT_EQ(box.Text, "COM1 is not available. \nPlease try to select another CommPort.");
    EXPECT_EQ(box.More, "/dev/ttyS0: permission denied: add yourself to the group that owns it (dialout).");
    EXPECT_EQ(box.Icon, QMessageBox::Warning);
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, APortThatDoesNotOpenLeavesNeitherARecordNorARecentFile) {
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by another program"};
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();
    Click("cmdDownload");
    EXPECT_EQ(LogText(), "");
    EXPECT_EQ(Settings["LastOpenFile/1"], "");
    EXPECT_EQ(Status(), "CommPort COM1 is not available.");
}

TEST_F(frmMainRun, AnUploadToAPortThatDoesNotOpenKeepsTheFileThatItWasToReplace) {
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by another program"};
    Start();
    const std::string backup = Folder.Write("backup.bin", AnyBytes(10));
    User.Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    User.TypeFile(backup);
    User.ClickInBox(QMessageBox::Yes);
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();  // the port dialog
    Click("cmdUpload");
    EXPECT_EQ(ReadFile(backup), AnyBytes(10));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AnUploadAsksAboutTheNameThatGotAnExtension) {
    Start();
    const std::string backup = Folder.Write("backup.bin", AnyBytes(10));
    User.Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    User.TypeFile(Folder / "backup");
    User.ClickInBox(QMessageBox::No);
    Click("cmdUpload");
    EXPECT_EQ(ReadFile(backup), AnyBytes(10));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AnUploadToAPortThatDoesNotOpenLeavesNoFile) {
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by another program"};
    Start();
    User.Next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    User.TypeFile(Folder / "read.bin");
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();
    Click("cmdUpload");
    EXPECT_FALSE(fs::exists(Folder / "read.bin"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRun, AClickThatComesWhileTheImageIsLookedAtStartsNothingElse) {
    ConnectUnitOfSize(ImageSize);
    Settings["LastOpenFile/1"] = Folder.Write("other.bin", SampleImage(65'536));
    Start();
    Upload(1, Folder / "read.bin");
    const std::string image = Image();
    User.Next([this, image](QDialog& dialog) {
        // Waits in the queue until the window looks at it again: while the image is read.
        QTimer::singleShot(0, Window.get(), [this] {
            Click("cmdUpload");
            Trigger("mnuFileMRF_1");
        });
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(QString::fromStdString(image));
        QTest::keyClick(name, Qt::Key_Return);
    });
    Click("cmdDownload");
    EXPECT_EQ(Status(), Programmed);
    EXPECT_EQ(ReadFile(image), SampleImage(ImageSize));
    EXPECT_EQ(Unit->Flash(), SampleImage(ImageSize));
    User.Escape();
    Click("cmdDownload");
    EXPECT_EQ(User.Dialogs().back(), "Open Burnwick File");
}

TEST_F(frmMainRun, TheDisplayDoesNotGetTheFocusByItself) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block", [this] { EXPECT_NE(Window->focusWidget(), Find("txtDisplay")); });
    Download(Image());
}

TEST_F(frmMainRun, AVerificationHasTheFocusOnCancelUntilItIsOver) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Verifying block", [this] { EXPECT_EQ(Window->focusWidget(), Find("cmdQuit")); });
    DownloadAndAnswer(QMessageBox::Yes);
}

TEST_F(frmMainRun, ATimeoutDuringAnUploadRemovesTheIncompleteFile) {
    Start();
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Timeout.");
    EXPECT_FALSE(fs::exists(Folder / "read.bin"));
}

TEST_F(frmMainRun, CanBeMadeAgainAfterEachEnd) {
    ConnectUnitOfSize(ImageSize, {{Fault::NoAnswer, 5}});
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    At(Loop.Time() + 10ms, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Uploading was completed successfully.");
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainRun, AnUnforeseenErrorIsShownAndLeavesTheWindowIdle) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 300", [] { throw std::runtime_error("out of luck"); });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Caption, "Error");
    EXPECT_EQ(User.Boxes().front().Text, "out of luck\n");
    EXPECT_EQ(Settings["Status/Programming"], "No");
    EXPECT_THAT(LogText(), HasSubstr("Status: Sending block 300"));
    EXPECT_TRUE(IsIdle());
    EXPECT_FALSE(CloseIsGreyed());
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainRun, AnUnforeseenErrorBeforeTheJobIsShownAndLeavesTheWindowIdle) {
    ConnectUnitOfSize(ImageSize);
    Start();
    OnStore = [](const std::string& key) {
        if (key == "Path/LastPath") {
            throw std::runtime_error("out of luck");
        }
    };
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_EQ(User.Boxes().size(), 1U);
    EXPECT_EQ(User.Boxes().front().Text, "out of luck\n");
    EXPECT_TRUE(IsIdle());
    OnStore = [](const std::string&) {};
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainRun, NotifiesOfItsOutcomeOnlyAUserWhoIsElsewhere) {
    ConnectUnitOfSize(ImageSize);
    Start();
    QWidget elsewhere;
    elsewhere.show();
    QApplication::setActiveWindow(&elsewhere);
    WhenStatus("Sending block", [&] { QApplication::setActiveWindow(&elsewhere); });
    Download(Image());
    EXPECT_THAT(Calls, Contains("notify Burnwick: Programming was completed successfully."));
    Calls.clear();
    WhenStatus("Sending block", [&] { QApplication::setActiveWindow(Window.get()); });
    Download(Image());
    EXPECT_THAT(Calls, Not(Contains(testing::StartsWith("notify"))));
}

TEST_F(frmMainRun, CallsAUserWhoIsElsewhereBeforeItAsksForAVerification) {
    ConnectUnitOfSize(ImageSize);
    Settings["Options/Verify"] = "1";
    Start();
    QWidget elsewhere;
    elsewhere.show();
    WhenStatus("Sending block", [&] { QApplication::setActiveWindow(&elsewhere); });
    User.TypeFile(Image());
    User.Next([this](QDialog& question) {
        EXPECT_EQ(Beeps, 1);
        EXPECT_THAT(Calls, Contains("notify Burnwick: Programming was completed successfully."));
        QTest::keyClick(&question, Qt::Key_Escape);
    });
    Click("cmdDownload");
    EXPECT_EQ(Beeps, 2);
}

TEST_F(frmMainRun, AMissingLogOptionIsStoredAgainAndTheRunIsLoggedInFull) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block", [this] { Settings.Values.erase("Options/LogOption"); });
    Download(Image());
    EXPECT_EQ(Settings["Options/LogOption"], "&All");
    EXPECT_THAT(LogText(), HasSubstr("File Information: "));
}

}  // namespace burnwick::test
