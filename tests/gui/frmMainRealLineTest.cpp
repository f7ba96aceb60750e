// A user at a window that has a real line.
#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>

#include "gui/frmMainRealLineTest.h"
#include "support/Eventually.h"
#include "support/SampleImages.h"

namespace burnwick::test {

namespace {

using modUtility::ReadIniValue;
using modUtility::WriteIniValue;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

bool Begins(const Bytes& memory, const Bytes& image) {
    return memory.size() >= image.size() && std::equal(image.begin(), image.end(), memory.begin());
}

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

TEST_F(frmMainRealLine, ADownloadProgramsTheUnit) {
    const UnitProgram unit;
    StartAt(unit.Line());
    Download(Image());
    EXPECT_EQ(Status(), Programmed) << Display();
    EXPECT_EQ(BarText(), "100%");
    EXPECT_TRUE(IsIdle());
    EXPECT_TRUE(Eventually([&] { return Begins(unit.Flash(), SampleImage(ImageSize)); }));
}

TEST_F(frmMainRealLine, AnUploadReadsTheUnit) {
    const UnitProgram unit;
    StartAt(unit.Line());
    Download(Image());
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Status(), "Uploading was completed successfully.") << Display();
    EXPECT_EQ(ReadFile(Folder / "read.bin"), SampleImage(ImageSize));
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

TEST_F(frmMainRealLine, AClickIsHandledWhileBlocksMove) {
    JobsHaveThreads = false;
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
    JobsHaveThreads = false;
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
