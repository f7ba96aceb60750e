// Start-up and shut-down of the main window.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "gui/Offers.h"
#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;

}  // namespace

class frmMainStart : public WindowTest {
protected:
    std::ptrdiff_t PlaceOf(const std::string& call) const {
        const auto found = std::find(Calls.begin(), Calls.end(), call);
        EXPECT_NE(found, Calls.end()) << call;
        return found - Calls.begin();
    }
};

TEST_F(frmMainStart, TellsPortAndSpeed) {
    Settings["COMPort/COM"] = "12";
    Start();
    EXPECT_EQ(Status(), "Ready on COM12 (115200bps).");
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainStart, OfASpeedThatIsNeitherTellsZero) {
    Settings["COMPort/BaudRate"] = "7";
    Start();
    EXPECT_EQ(Status(), "Ready on COM1 (0bps).");
}

TEST_F(frmMainStart, WithoutAPortTakesTheFirstThatOpensAndStoresIt) {
    Settings["COMPort/COM"] = "";
    Start();
    EXPECT_EQ(Settings["COMPort/COM"], "1");
    EXPECT_EQ(Status(), "Ready on COM1 (115200bps).");
}

TEST_F(frmMainStart, WithoutAnyPortThatOpensStoresNone) {
    Settings["COMPort/COM"] = "";
    PortTrouble = CommError{CommErrorNumber::NotSerial, "no such device"};
    Start();
    EXPECT_EQ(Settings["COMPort/COM"], "");
    EXPECT_EQ(Status(), "Ready on COM1 (115200bps).");
}

TEST_F(frmMainStart, IgnoresAPortOutsideOneToSixteen) {
    Settings["COMPort/COM"] = "17";
    Start();
    EXPECT_EQ(Status(), "Ready on COM1 (115200bps).");
}

TEST_F(frmMainStart, FillsInWhatTheSettingsLack) {
    Settings.Values.clear();
    Start();
    EXPECT_EQ(Settings["Options/LogOption"], "&All");
    EXPECT_EQ(Settings["Options/ContextMenu"], "No");
    EXPECT_EQ(Settings["Options/Desktop"], "No");
    EXPECT_EQ(Settings["COMPort/COM"], "1");
    EXPECT_EQ(Settings["COMPort/BaudRate"], "0");
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainStart, TakesItsStepsInTheirOrder) {
    Settings.Values.clear();
    Start();
    const std::vector steps{PlaceOf("copies of Burnwick"),
                            PlaceOf("read Status/Programming"),
                            PlaceOf("no shortcut"),
                            PlaceOf("write Options/ContextMenu=No"),
                            PlaceOf("write Options/Desktop=No"),
                            PlaceOf("write Options/LogOption=&All"),
                            PlaceOf("read COMPort/COM"),
                            PlaceOf("write COMPort/COM=1"),
                            PlaceOf("write COMPort/BaudRate=0"),
                            PlaceOf("write Status/Programming=No"),
                            PlaceOf("read LastOpenFile/1")};
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end())) << testing::PrintToString(Calls);
}

TEST_F(frmMainStart, RegistersTheFileTypeAgainForAProgramThatHasMoved) {
    Shell.Associated = "/old/place/Burnwick";
    Start();
    EXPECT_THAT(Calls, Contains("register /opt/burnwick/Burnwick"));
    EXPECT_EQ(Settings["Options/ContextMenu"], "Yes");
}

TEST_F(frmMainStart, MakesTheDesktopShortcutAnewWhenItIsWanted) {
    Settings["Options/Desktop"] = "Yes";
    Start();
    EXPECT_THAT(Calls, Contains("shortcut /opt/burnwick/Burnwick"));
}

TEST_F(frmMainStart, WhileAnotherCopyIsIdleBringsThatForwardAndEnds) {
    AnotherRuns = true;
    Settings["Status/Programming"] = "No";
    EXPECT_FALSE(Start());
    EXPECT_FALSE(Window->isVisible());
    EXPECT_THAT(Stored, ElementsAre());
}

TEST_F(frmMainStart, WhileAnotherCopyIsProgrammingOpensAWorkingWindow) {
    AnotherRuns = true;
    Settings["Status/Programming"] = "Yes";
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(IsIdle());
}

TEST_F(frmMainStart, WhileAnotherCopyDoesNotComeForwardRunsOn) {
    AnotherRuns = true;
    AnotherComes = false;
    EXPECT_TRUE(Start());
}

TEST_F(frmMainStart, ComesForwardWhenALaterCopyAsks) {
    Start();
    Window->showMinimized();
    ComeForward();
    EXPECT_FALSE(Window->isMinimized());
}

TEST_F(frmMainStart, WithAFileProgramsItWithoutAnyDialog) {
    ConnectUnitOfSize(ImageSize);
    Start(Image());
    EXPECT_EQ(Status(), Programmed);
    EXPECT_THAT(User.Dialogs(), ElementsAre());
    EXPECT_EQ(Unit->Flash(), SampleImage(ImageSize));
}

TEST_F(frmMainStart, ShowsTheWindowBeforeItProgramsAFile) {
    ConnectUnitOfSize(ImageSize);
    bool visible = false;
    WhenStatus("Waiting", [&] { visible = Window->isVisible(); });
    Start(Image());
    EXPECT_TRUE(visible);
}

TEST_F(frmMainStart, LoadsTheRecentFilesAfterTheFileIsProgrammed) {
    ConnectUnitOfSize(ImageSize);
    Start(Image());
    EXPECT_EQ(Find<QAction>("mnuFileMRF_1")->text().toStdString(), "&1 " + Image());
}

TEST_F(frmMainStart, TakesTheQuotesFromTheFilesPath) {
    ConnectUnitOfSize(ImageSize);
    Start('"' + Image("two words.bin") + '"');
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainStart, WithAFileShowsTheDialogForTheNextDownloadAllTheSame) {
    ConnectUnitOfSize(ImageSize);
    Start(Image());
    User.Escape();
    Click("cmdDownload");
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File"));
}

TEST_F(frmMainStart, WithAFileProgramsARecentOneWhenThatIsChosen) {
    ConnectUnitOfSize(ImageSize);
    const std::string other = Folder.Write("other.bin", SampleImage(65'536));
    Settings["LastOpenFile/1"] = other;
    Start(Image());
    Trigger("mnuFileMRF_2");
    EXPECT_THAT(Display(), StartsWith("Opening " + other));
}

TEST_F(frmMainStart, OfAPreReleaseTellsItsVersionInTheTitle) {
    Title = "Burnwick Pre";
    Start();
    EXPECT_EQ(Caption(), "Burnwick Pre 2.08.00");
}

TEST_F(frmMainStart, ShowsTheDebugBoxOnlyOnRequest) {
    Start();
    EXPECT_FALSE(Find<QCheckBox>("chkDebug")->isVisible());
    EXPECT_EQ(Caption(), "Burnwick");
}

TEST_F(frmMainStart, WithTheDebugBoxTickedHasATitleOfItsOwn) {
    Debug = true;
    Start();
    EXPECT_TRUE(Find<QCheckBox>("chkDebug")->isVisible());
    EXPECT_EQ(Caption(), "Burnwick-Debug");
}

TEST_F(frmMainStart, TakesRestoreSizeAndMaximizeAway) {
    Start();
    EXPECT_EQ(Window->minimumSize(), Window->maximumSize());
    EXPECT_FALSE(OffersMaximize(*Window));
    EXPECT_TRUE(OffersMinimize(*Window));
    EXPECT_TRUE(OffersClose(*Window));
}

TEST_F(frmMainStart, PutsTheFocusOnDownload) {
    Start();
    EXPECT_EQ(Window->focusWidget(), Find("cmdDownload"));
    EXPECT_TRUE(Find<QPushButton>("cmdDownload")->isDefault());
}

TEST_F(frmMainStart, GivesEachControlItsNameForAssistiveProgramsToo) {
    Start();
    for (const char* const name :
         {"cmdDownload", "cmdUpload", "cmdQuit", "txtDisplay", "PercentBar1", "lblStatus", "lblTiming",
          "lblChecksum", "lblVersion", "lblLanguage", "lblDateStamp", "fraSummary", "chkDebug", "mnuFile",
          "mnuTools", "mnuHelp"}) {
        EXPECT_EQ(Find(name)->accessibleName(), name);
    }
}

TEST_F(frmMainStart, TellsAssistiveProgramsWhatEachControlShows) {
    Start();
    EXPECT_EQ(Find("cmdDownload")->accessibleDescription(), "Download");
    EXPECT_EQ(Find("lblStatus")->accessibleDescription(), "Ready on COM1 (115200bps).");
    EXPECT_EQ(Find("txtDisplay")->accessibleDescription(), "Messages");
    EXPECT_EQ(Find("PercentBar1")->accessibleDescription(), "Progress");
    At(1s, [this] {
        EXPECT_EQ(Find("cmdQuit")->accessibleDescription(), "Cancel");
        EXPECT_EQ(Find("lblStatus")->accessibleDescription(), "Waiting for response from Multiplexer...");
        Click("cmdQuit");
    });
    Download(Image());
    EXPECT_EQ(Find("cmdQuit")->accessibleDescription(), "Quit");
    EXPECT_EQ(Find("lblVersion")->accessibleDescription(), "4.10");
    EXPECT_EQ(Window->accessibleDescription(), Window->windowTitle());
}

TEST_F(frmMainStart, HasAllItsCommandsInTheirMenus) {
    Start();
    const auto captions = [this](const char* menu) {
        std::vector<std::string> texts;
        for (const QAction* const command : Find<QMenu>(menu)->actions()) {
            if (command->isVisible() && !command->isSeparator()) {
                texts.push_back(command->text().toStdString());
            }
        }
        return texts;
    };
    EXPECT_THAT(captions("mnuFile"), ElementsAre("&Download...", "&Upload...", "Co&mpare Files...", "&Copy",
                                                 "Copy &To Folder...", "E&xit"));
    EXPECT_THAT(captions("mnuTools"), ElementsAre("COM &Port Setting...", "View &Log...", "&Options..."));
    EXPECT_THAT(captions("mnuHelp"), ElementsAre("Burnwick &Help", "&About Burnwick..."));
}

TEST_F(frmMainStart, IsWalkedThroughByTheTabKey) {
    Start();
    QApplication::setActiveWindow(Window.get());
    for (const char* const next : {"cmdUpload", "cmdQuit", "txtDisplay", "cmdDownload"}) {
        QTest::keyClick(Window->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(Window->focusWidget(), Find(next)) << next;
    }
}

TEST_F(frmMainStart, ProgramsAtEnterForDownloadIsTheDefault) {
    Start();
    User.Escape();
    QTest::keyClick(Window->focusWidget(), Qt::Key_Return);
    EXPECT_THAT(User.Dialogs(), ElementsAre("Open Burnwick File"));
}

TEST_F(frmMainStart, QuitEndsItAndMarksThatNothingIsProgrammed) {
    Start();
    Settings["Status/Programming"] = "Yes";
    Click("cmdQuit");
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainStart, ExitInTheMenuEndsItToo) {
    Start();
    Trigger("mnuFileExit");
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(frmMainStart, ItsEndClosesTheHelpWindow) {
    Start();
    QWidget help;
    help.setWindowTitle("Burnwick (OEM) Help");
    help.show();
    QWidget other;
    other.setWindowTitle("Burnwick Help wanted");
    other.show();
    Click("cmdQuit");
    EXPECT_FALSE(help.isVisible());
    EXPECT_TRUE(other.isVisible());
}

TEST_F(frmMainStart, StaysAsWideAsItIsWhateverItsTextsAre) {
    Start();
    const QSize size = Window->size();
    Find<QLabel>("lblStatus")->setText(QString(500, 'x'));
    Find<QLabel>("lblVersion")->setText(QString(500, 'x'));
    QCoreApplication::processEvents();
    EXPECT_EQ(Window->size(), size);
}

}  // namespace burnwick::test
