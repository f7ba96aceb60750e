// The window as it is shipped: the event loop, the serial device, settings and log in files; at the other end
// of a pseudo-terminal the simulated unit, a process of its own.
#include <fcntl.h>
#include <sys/file.h>

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

#include "gui/FakeDesktop.h"
#include "gui/WatchedLoop.h"
#include "gui/WindowUser.h"
#include "platform/ChildProcess.h"
#include "platform/PseudoTerminal.h"
#include "platform/System.h"
#include "platform/WindowLoop.h"
#include "settings/modUtility.h"
#include "support/Program.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace {

using modUtility::ReadIniValue;
using modUtility::WriteIniValue;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr std::size_t Size = 262'144;
constexpr auto Programmed = "Programming was completed successfully.";

// What a click leaves in the queue of events.
void PostClick(QWidget& control) {
    const QPointF middle = control.rect().center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QCoreApplication::postEvent(
            &control, new QMouseEvent(type, middle, control.mapToGlobal(middle), Qt::LeftButton, held, {}));
    }
}

}  // namespace

class frmMainRealLine : public WindowUser {
protected:
    frmMainRealLine() {
        modUtility::SetIniPath(Folder.Path() / "home" / "Burnwick.ini");
        WriteIniValue("COMPort", "COM", "1");
        WriteIniValue("COMPort", "BaudRate", "1");
        Loop_.Look = [this] { LookAtStatus(); };
    }
    ~frmMainRealLine() override { Window.reset(); }

    // The program is started, its COM1 is this device.
    void StartAt(const std::string& device) {
        WriteIniValue("Ports", "COM1", device);
        Window = std::make_unique<frmMain>(Services_);
        ASSERT_TRUE(Window->Form_Load());
    }
    void ExpectUsable(const UnitProgram& unit) {
        EXPECT_TRUE(IsIdle());
        WriteIniValue("Ports", "COM1", unit.Line());
        Download(Image("next.bin"));
        EXPECT_EQ(Status(), Programmed) << Display();
    }

private:
    std::unique_ptr<MessageLoop> RealLoop_ = NewWindowLoop();
    WatchedLoop Loop_{*RealLoop_};
    FakeShell Shell_;
    WindowServices Services_{
        .Product = {.Title = "Burnwick", .Major = 2, .Minor = 8, .Revision = 1000},
        .Trace = [](const std::string&) {},
        .Loop = Loop_,
        .Setting = ReadIniValue,
        .Store = WriteIniValue,
        .ProgramFolder = Folder.Path() / "home",
        .Executable = "/opt/burnwick/Burnwick",
        .Shell = Shell_,
        .Copies =
            [](const std::string&) {
                return std::make_unique<FakeCopies>(false, false, [](const std::function<void()>&) {});
            },
        .NewDevice = NewSerialDevice,
        .InhibitSleep = [](const std::string&) { return nullptr; },
        .Beep = [] {},
        .Flash = [](QWidget*) {},
        .Notify = [](const std::string&, const std::string&) {},
    };
};

TEST_F(frmMainRealLine, ADownloadProgramsTheUnit) {
    const UnitProgram unit({"--size", "262144"});
    StartAt(unit.Line());
    Download(Image());
    EXPECT_EQ(Status(), Programmed) << Display();
    EXPECT_EQ(BarText(), "100%");
    EXPECT_TRUE(IsIdle());
    EXPECT_TRUE(Eventually([&] { return unit.Flash() == SampleImage(Size); }));
}

TEST_F(frmMainRealLine, AnUploadReadsTheUnit) {
    const UnitProgram unit;
    StartAt(unit.Line());
    Download(Image());
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Uploading was completed successfully.") << Display();
    EXPECT_EQ(ReadFile(Folder / "read.bin"), SampleImage(Size));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRealLine, ADownloadIsVerified) {
    const UnitProgram unit;
    StartAt(unit.Line());
    WriteIniValue("Options", "Verify", "1");
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
    EXPECT_THAT(Display(), EndsWith("Verifying was successfully.\n"));
    EXPECT_EQ(Status(), Programmed);
    EXPECT_FALSE(std::filesystem::exists(Folder / "home/Verify.tmp"));
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainRealLine, AUnitThatIsGoneInMidRunIsATransmittingError) {
    UnitProgram unit;
    StartAt(unit.Line());
    WhenStatus("Sending block", [&] { unit.Kill(); });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    Click("cmdDownload");
    ASSERT_THAT(User.Boxes(), SizeIs(1));
    EXPECT_EQ(User.Boxes().front().Caption, "Transmitting Error");
    EXPECT_THAT(Status(), HasSubstr("Transmitting error"));
    EXPECT_THAT(LogText(), HasSubstr("Transmitting error"));
    ExpectUsable(UnitProgram());
}

TEST_F(frmMainRealLine, ARunThatWaitsForItsUnitIsCancelled) {
    const PseudoTerminal nobody;
    StartAt(nobody.Path());
    WhenStatus("Waiting for response", [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    ExpectUsable(UnitProgram());
}

TEST_F(frmMainRealLine, AClickIsHandledWhileBlocksMove) {
    const UnitProgram unit;
    StartAt(unit.Line());
    QPushButton elsewhere;
    std::string status;
    QObject::connect(&elsewhere, &QPushButton::clicked, [&] { status = Status(); });
    WhenStatus("Sending block", [&] { PostClick(elsewhere); });
    Download(Image());
    EXPECT_THAT(status, AllOf(HasSubstr("Sending block"), Not(HasSubstr(" 1024 of"))));
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainRealLine, AKeyStopsADownloadWhileBlocksMove) {
    const UnitProgram unit;
    StartAt(unit.Line());
    WhenStatus("Sending block", [this] {
        QCoreApplication::postEvent(Find("txtDisplay"),
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_S, Qt::ShiftModifier));
    });
    Download(Image());
    EXPECT_EQ(Status(), "Programming was canceled.");
    ExpectUsable(unit);
}

TEST_F(frmMainRealLine, APortThatAnotherProcessHoldsIsToldWithWhoHoldsIt) {
    const PseudoTerminal line;
    const ChildProcess holder([&line] {
        const int port = open(line.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        flock(port, LOCK_EX);
    });
    StartAt(line.Path());
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Ok);
    User.Escape();  // the port dialog
    Click("cmdDownload");
    ASSERT_THAT(User.Boxes(), SizeIs(1));
    EXPECT_EQ(User.Boxes().front().Caption, "CommPort Error");
    EXPECT_THAT(User.Boxes().front().More,
                AllOf(HasSubstr(line.Path() + " is in use by "),
                      HasSubstr("(process " + std::to_string(holder.Process()) + ")")));
    EXPECT_EQ(Status(), "CommPort COM1 is not available.");
    EXPECT_THAT(LogText(), IsEmpty());
    ExpectUsable(UnitProgram());
}

TEST_F(frmMainRealLine, SettingsLogAndRecentFilesAreThereAtTheNextStart) {
    const UnitProgram unit;
    const std::string image = Image();
    StartAt(unit.Line());
    Download(image);
    EXPECT_EQ(ReadIniValue("Status", "Programming"), "No");
    EXPECT_EQ(ReadIniValue("Path", "LastPath"), Folder.Path().string());
    EXPECT_THAT(LogText(), AllOf(HasSubstr(image), HasSubstr(Programmed)));
    const std::size_t logged = LogText().size();
    StartAt(unit.Line());
    EXPECT_EQ(Find<QAction>("mnuFileMRF_1")->text().toStdString(), "&1 " + image);
    Trigger("mnuFileMRF_1");
    EXPECT_EQ(Status(), Programmed);
    EXPECT_GT(LogText().size(), logged);
}

TEST_F(frmMainRealLine, ARunIsMarkedInTheSettingsForOtherCopies) {
    const UnitProgram unit;
    StartAt(unit.Line());
    std::string mark;
    WhenStatus("Sending block", [&] { mark = ReadIniValue("Status", "Programming"); });
    Download(Image());
    EXPECT_EQ(mark, "Yes");
    EXPECT_EQ(ReadIniValue("Status", "Programming"), "No");
}

}  // namespace burnwick::test
