// What the window says for every outcome of a run: title, status, display, bar, boxes, calls, log and
// settings.
#include <QPushButton>
#include <filesystem>

#include "gui/WindowTest.h"
#include "platform/serial/SystemPorts.h"
#include "support/Golden.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;

}  // namespace

class WindowOutcome : public WindowTest {
protected:
    void Record(const std::string& name) {
        std::string text = "== title\n" + Caption() + "\n== status\n" + Status() + "\n== bar\n" + BarText()
                           + "\n== display\n" + Display() + "\n== boxes\n";
        for (const auto& box : User.Boxes()) {
            text += box.Caption + ": " + box.Text + (box.More.empty() ? "" : "\n" + box.More)
                    + (box.Default.empty() ? "" : "\n[" + box.Default + "]") + "\n";
        }
        text += "== beeps " + std::to_string(Beeps) + "\n== stored\n";
        for (const auto& stored : Stored) {
            text += stored + "\n";
        }
        text += "== log\n" + LogText() + "== settings\n" + SettingsText(Settings.Values);
        ExpectGolden("window/" + name, Normalized(text, Folder.Path(), SystemDeviceOf(1)));
        EXPECT_TRUE(IsIdle());
    }
    void DownloadFrom(std::vector<simulator::FaultOrder> faults) {
        ConnectUnitOfSize(ImageSize, std::move(faults));
        Start();
        Download(Image());
    }
    void DownloadAndVerify(std::vector<simulator::FaultOrder> faults) {
        ConnectUnitOfSize(ImageSize, std::move(faults));
        Start();
        DownloadAndAnswer(QMessageBox::Yes);
    }
    void UploadFrom(std::vector<simulator::FaultOrder> faults) {
        ConnectUnitOfSize(ImageSize, std::move(faults));
        Start();
        Upload(1, Folder / "upload.bin");
    }
};

TEST_F(WindowOutcome, OfADownloadThatSucceeds) {
    DownloadFrom({});
    Record("download-ok");
}

TEST_F(WindowOutcome, OfADownloadThatIsVerified) {
    DownloadAndVerify({});
    Record("download-verified");
}

TEST_F(WindowOutcome, OfADownloadThatTheUserDoesNotVerify) {
    ConnectUnitOfSize(ImageSize);
    Start();
    DownloadAndAnswer(QMessageBox::No);
    Record("download-not-verified");
}

TEST_F(WindowOutcome, OfADownloadWhoseReadBackDiffers) {
    DownloadAndVerify(ThreeWrongBytes());
    Record("download-different");
}

TEST_F(WindowOutcome, OfADownloadWhoseReadBackFails) {
    WhenStatus("Verifying block 100", [this] { PullOut(); });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    Click("cmdDownload");
    Record("download-not-read-back");
}

TEST_F(WindowOutcome, OfADownloadThatNobodyAnswers) {
    Start();
    Download(Image());
    Record("download-no-response");
}

TEST_F(WindowOutcome, OfADownloadThatFailsInMidTransfer) {
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    ConnectUnitOfSize(ImageSize, {{Fault::Negative7, 16}});
    Start();
    Click("cmdDownload");
    Record("download-transmitting-error");
}

TEST_F(WindowOutcome, OfADownloadOfAnImageForAnotherUnit) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(131'072);
    options.Ident = '{';
    Connect(std::move(options));
    Start();
    Download(Folder.Write("other.bin", ImageWith(70'000, 0, {0xC0, 0xDE, 0x01, 0x49})));
    Record("download-not-compatible");
}

TEST_F(WindowOutcome, OfADownloadThatIsCanceledWhileItWaits) {
    Start();
    At(5s, [this] { Click("cmdQuit"); });
    Download(Image());
    Record("download-canceled-waiting");
}

TEST_F(WindowOutcome, OfADownloadWithoutItsPort) {
    Start();
    PortTrouble = CommError{CommErrorNumber::Busy, "DEVICE is in use"};
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();
    Click("cmdDownload");
    Record("download-port-error");
}

TEST_F(WindowOutcome, OfADownloadOfAFileThatIsGone) {
    Start(Folder / "gone.bin");
    Record("download-no-file");
}

TEST_F(WindowOutcome, OfADownloadOfAFileThatIsNoImage) {
    Start(Folder.Write("text.bin", AnyBytes(1000)));
    Record("download-no-image");
}

TEST_F(WindowOutcome, OfAnUploadThatSucceeds) {
    UploadFrom({});
    Record("upload-ok");
}

TEST_F(WindowOutcome, OfAnUploadThatNobodyAnswers) {
    Start();
    Upload(1, Folder / "upload.bin");
    Record("upload-no-response");
}

TEST_F(WindowOutcome, OfAnUploadThatFailsInMidTransfer) {
    ConnectUnitOfSize(ImageSize, {{Fault::CutShort, 500}});
    Start();
    User.Next([](QDialog& dialog) { dialog.findChild<QPushButton*>("cmdOK")->click(); });
    User.TypeFile(Folder / "upload.bin");
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdUpload");
    Record("upload-transmitting-error");
}

TEST_F(WindowOutcome, OfAnUploadThatIsCanceled) {
    At(10s, [this] { Window->Unload(); });
    UploadFrom({{Fault::NoAnswer, 500}});
    Record("upload-canceled");
}

}  // namespace burnwick::test
