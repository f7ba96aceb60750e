// What the command line says for every outcome of a run: output, errors, exit status, JSON, log and settings.
#include <filesystem>

#include "cli/CliTest.h"
#include "platform/serial/SystemPorts.h"
#include "support/Golden.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;

}  // namespace

class CliOutcome : public CliTest {
protected:
    void ConnectUnit(std::vector<simulator::FaultOrder> faults = {}, bool programmed = false) {
        auto options = UnitOfSize(ImageSize);
        options.Flash = programmed ? SampleImage(ImageSize) : options.Flash;
        options.Faults = std::move(faults);
        Connect(std::move(options));
    }

    // Runs the command line twice, the second time with --json; `prepare` makes ready for each.
    void Record(const std::string& name, std::vector<std::string> arguments,
                const std::function<void()>& prepare) {
        Folder.Write("image.bin", SampleImage(ImageSize));
        std::string text = RunPrepared(arguments, prepare);
        text += "== log\n" + LogText() + "== settings\n" + SettingsText(Settings.Values);
        arguments.emplace_back("--json");
        text += RunPrepared(arguments, prepare);
        ExpectGolden("cli/" + name, Normalized(text, Folder.Path(), SystemDeviceOf(2)));
    }

    const std::string Image = Folder / "image.bin";
    const std::string File = Folder / "upload.bin";

private:
    std::string RunPrepared(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
        std::filesystem::remove(Folder.Path() / "upload.bin");
        prepare();
        std::string command = "== burnwick-cli";
        for (const auto& argument : arguments) {
            command += " " + argument;
        }
        const int status = Run(arguments);
        return command + "\n" + Out() + "== errors\n" + Err() + "== exit status " + std::to_string(status)
               + "\n";
    }
};

TEST_F(CliOutcome, OfADownloadThatSucceeds) {
    Record("download-ok", {"download", Image, "--port", "COM2"}, [this] { ConnectUnit(); });
}

TEST_F(CliOutcome, OfADownloadThatIsVerified) {
    Record("download-verified", {"download", Image, "--port", "COM2", "--verify"}, [this] { ConnectUnit(); });
}

TEST_F(CliOutcome, OfADownloadWhoseReadBackDiffers) {
    Record("download-different", {"download", Image, "--port", "COM2", "--verify"}, [this] {
        ConnectUnit({{Fault::FlipData, 300}, {Fault::FlipData, 300}});
    });
}

TEST_F(CliOutcome, OfADownloadWhoseReadBackIsCanceled) {
    ConnectUnit();
    Folder.Write("image.bin", SampleImage(ImageSize));
    ASSERT_EQ(Run({"download", Image, "--port", "COM2", "--verify"}), 0);
    const auto wholeRun = Loop.Time();
    std::filesystem::remove(Folder.Path() / "home" / "Burnwick.log");
    Record("download-read-back-canceled", {"download", Image, "--port", "COM2", "--verify"}, [&] {
        ConnectUnit();
        InterruptAt(Loop.Time() + wholeRun - 50ms);
    });
}

TEST_F(CliOutcome, OfADownloadThatNobodyAnswers) {
    Record("download-no-response", {"download", Image, "--port", "COM2"}, [] {});
}

TEST_F(CliOutcome, OfADownloadThatFailsInMidTransfer) {
    Record("download-transmitting-error", {"download", Image, "--port", "COM2"}, [this] {
        ConnectUnit({{Fault::Negative7, 16}});
    });
}

TEST_F(CliOutcome, OfADownloadOfAnImageForAnotherUnit) {
    const std::string image = Folder.Write("other.bin", ImageWith(70'000, 0, {0xC0, 0xDE, 0x01, 0x49}));
    Record("download-not-compatible", {"download", image, "--port", "COM2"}, [this] {
        auto options = UnitOfSize(131'072);
        options.Ident = '{';
        Connect(std::move(options));
    });
}

TEST_F(CliOutcome, OfADownloadThatIsCanceledWhileItWaits) {
    Record("download-canceled-waiting", {"download", Image, "--port", "COM2"},
           [this] { InterruptAt(Loop.Time() + 5s); });
}

TEST_F(CliOutcome, OfADownloadThatIsCanceledInMidTransfer) {
    Record("download-canceled", {"download", Image, "--port", "COM2"}, [this] {
        ConnectUnit({{Fault::NoAnswer, 100}});
        InterruptAt(Loop.Time() + 10s);
    });
}

TEST_F(CliOutcome, OfADownloadWithoutItsPort) {
    PortTrouble = CommError{CommErrorNumber::Busy, "DEVICE is in use"};
    Record("download-port-error", {"download", Image, "--port", "COM2"}, [] {});
}

TEST_F(CliOutcome, OfADownloadOfAFileThatIsGone) {
    Record("download-no-file", {"download", Folder / "gone.bin", "--port", "COM2"}, [] {});
}

TEST_F(CliOutcome, OfADownloadOfAFileThatIsNoImage) {
    Folder.Write("text.bin", AnyBytes(1000));
    Record("download-no-image", {"download", Folder / "text.bin", "--port", "COM2"}, [] {});
}

TEST_F(CliOutcome, OfAnUploadThatSucceeds) {
    Record("upload-ok", {"upload", File, "--port", "COM2", "--chip", "2Mbit"}, [this] { ConnectUnit(); });
}

TEST_F(CliOutcome, OfAnUploadThatNobodyAnswers) {
    Record("upload-no-response", {"upload", File, "--port", "COM2", "--chip", "2Mbit"}, [] {});
}

TEST_F(CliOutcome, OfAnUploadThatFailsInMidTransfer) {
    Record("upload-transmitting-error", {"upload", File, "--port", "COM2", "--chip", "2Mbit"}, [this] {
        ConnectUnit({{Fault::CutShort, 500}});
    });
}

TEST_F(CliOutcome, OfAnUploadThatIsCanceled) {
    Record("upload-canceled", {"upload", File, "--port", "COM2", "--chip", "2Mbit"}, [this] {
        ConnectUnit({{Fault::NoAnswer, 500}});
        InterruptAt(Loop.Time() + 10s);
    });
}

TEST_F(CliOutcome, OfAnUploadIntoAFolderThatIsGone) {
    Record("upload-no-folder", {"upload", Folder / "gone/file.bin", "--port", "COM2", "--chip", "2Mbit"},
           [this] { ConnectUnit(); });
}

TEST_F(CliOutcome, OfAVerificationThatMatches) {
    Record("verify-ok", {"verify", Image, "--port", "COM2"},
           [this] { ConnectUnit({}, /*programmed=*/true); });
}

TEST_F(CliOutcome, OfAVerificationThatFindsDifferences) {
    Record("verify-different", {"verify", Image, "--port", "COM2"}, [this] {
        ConnectUnit({{Fault::FlipData, 300}}, /*programmed=*/true);
    });
}

TEST_F(CliOutcome, OfAVerificationThatNobodyAnswers) {
    Record("verify-no-response", {"verify", Image, "--port", "COM2"}, [] {});
}

TEST_F(CliOutcome, OfAVerificationThatIsCanceled) {
    Record("verify-canceled", {"verify", Image, "--port", "COM2"}, [this] {
        ConnectUnit({{Fault::NoAnswer, 100}}, /*programmed=*/true);
        InterruptAt(Loop.Time() + 5s);
    });
}

}  // namespace burnwick::test
