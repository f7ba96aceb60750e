// The whole text of the display, for every way that a run can end.
#include <QPlainTextEdit>
#include <QTest>

#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;

const std::string Contact =
    "Contact established at 115200bps.\n"
    " \n"
    "Start time: Friday, 11/20/2026, 11:59:30 PM.\n";
const std::string Erasing =
    "Getting ready to start programming...\n"
    "Erasing the chip...\n";
const std::string Sending = "Sending data to the unit...\n";
const std::string Reading =
    "Getting ready to upload data...\n"
    "Reading data from the unit...\n";
const std::string EndOfProgramming =
    " \n"
    "Programming was completed successfully.\n";
const std::string Uploaded =
    " \n"
    "Uploading was completed successfully.\n";
const std::string Finish =
    " \n"
    "Finish time: Friday, 11/20/2026, 11:59:30 PM.\n"
    "Elapsed time: 00:00.\n"
    " \n"
    "Now rebooting the unit...\n";
const std::string PowerCycle =
    " \n"
    "Please power off, then power on the unit. Waiting...\n";

// What is said before the unit has answered.
std::string Opening(const std::string& path) {
    return "Opening " + path
           + "...\n"
             " \n"
             "Selected baud rate: 115200bps.\n"
             "Waiting for response from the unit on COM1...\n";
}

std::string Downloaded(const std::string& path) {
    return Opening(path) + Contact + Erasing + Sending + EndOfProgramming + Finish;
}

}  // namespace

class frmMainDisplay : public WindowTest {
protected:
    // A read-back takes place in the second after the programming.
    std::string ReadBack() const {
        std::string text = Opening(Folder / "home/Verify.tmp") + Contact + "Verifying...Please wait.\n"
                           + Reading + Uploaded + Finish;
        for (auto at = text.find("11:59:30"); at != std::string::npos; at = text.find("11:59:30")) {
            text.replace(at, 8, "11:59:31");
        }
        return text;
    }
    // The user agrees to a verification.
    void DownloadAndVerify(const std::string& path) {
        User.TypeFile(path);
        User.ClickInBox(QMessageBox::Yes);
        Click("cmdDownload");
    }
    void PressInDisplay(Qt::KeyboardModifiers modifiers) const {
        QTest::keyClick(Find<QPlainTextEdit>("txtDisplay"), Qt::Key_S, modifiers);
    }
};

TEST_F(frmMainDisplay, OfADownload) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_EQ(Display(), Downloaded(Image()));
}

TEST_F(frmMainDisplay, OfAnUpload) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Display(), Opening(Folder / "read.bin") + Contact + Reading + Uploaded + Finish);
}

TEST_F(frmMainDisplay, OfAVerifiedDownload) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndVerify(Image());
    EXPECT_EQ(Display(), Downloaded(Image()) + PowerCycle + ReadBack() + "Verifying was successfully.\n");
}

TEST_F(frmMainDisplay, OfAMismatch) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize, ThreeWrongBytes());
    Start();
    DownloadAndVerify(Image());
    EXPECT_EQ(Display(),
              Downloaded(Image()) + PowerCycle + ReadBack() + "Verifying error: 3 bytes are different.\n");
}

TEST_F(frmMainDisplay, OfAVerificationThatIsCanceled) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Waiting...", [this] { Click("cmdQuit"); });
    DownloadAndVerify(Image());
    EXPECT_EQ(Display(), Downloaded(Image()) + PowerCycle + Opening(Folder / "home/Verify.tmp")
                             + " \n"
                               "Uploading was canceled.\n"
                               "Verifying was canceled.\n");
}

TEST_F(frmMainDisplay, OfACancelWhileWaiting) {
    Start();
    At(5s, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_EQ(Display(), Opening(Image())
                             + " \n"
                               "Programming was canceled.\n");
}

TEST_F(frmMainDisplay, OfShiftSWhileSending) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 500", [this] { PressInDisplay(Qt::ShiftModifier); });
    Download(Image());
    EXPECT_EQ(Display(), Opening(Image()) + Contact + Erasing + Sending
                             + " \n"
                               "Programming was canceled.\n");
}

TEST_F(frmMainDisplay, OfCtrlShiftSWhileSendingIsThatOfADownload) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 500", [this] {
        PressInDisplay(Qt::ShiftModifier | Qt::ControlModifier);
        PressInDisplay(Qt::ShiftModifier | Qt::AltModifier);
        PressInDisplay(Qt::NoModifier);
    });
    Download(Image());
    EXPECT_EQ(Display(), Downloaded(Image()));
}

TEST_F(frmMainDisplay, OfShiftSInAnUploadIsThatOfAnUpload) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Reading block 500", [this] { PressInDisplay(Qt::ShiftModifier); });
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Display(), Opening(Folder / "read.bin") + Contact + Reading + Uploaded + Finish);
}

TEST_F(frmMainDisplay, OfATimeout) {
    Start();
    Download(Image());
    EXPECT_EQ(Display(), Opening(Image())
                             + " \n"
                               "No response from the unit.\n"
                               "Timeout.\n");
}

TEST_F(frmMainDisplay, OfATransmittingError) {
    ConnectUnitOfSize(ImageSize, {{Fault::NoAnswer, 500}});
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    EXPECT_EQ(Display(), Opening(Image()) + Contact + Erasing + Sending
                             + " \n"
                               "Transmitting error.\n");
}

TEST_F(frmMainDisplay, OfAnImageForAnotherUnit) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    options.Ident = 'X';
    Connect(std::move(options));
    Start();
    const std::string image = Folder.Write("other.bin", SampleType4Image());
    Download(image);
    EXPECT_EQ(Display(), Opening(image)
                             + " \n"
                               "The software is not compatible.\n");
}

TEST_F(frmMainDisplay, OfAPortThatDoesNotOpen) {
    PortTrouble = CommError{CommErrorNumber::Busy, "/dev/ttyS0 is in use by minicom (process 815)"};
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();
    Click("cmdDownload");
    EXPECT_EQ(Display(), "CommPort is not available.\n");
}

TEST_F(frmMainDisplay, OfAFileThatIsNoImage) {
    Start();
    Download(Folder.Write("text.bin", AnyBytes(1000)));
    EXPECT_EQ(Display(), "Invalid file format.");
}

}  // namespace burnwick::test
