// What a run shows of itself: status, timing, bar, caption, and the image's summary.
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <filesystem>

#include "engine/PercentBar.h"
#include "gui/WindowTest.h"
#include "support/MatchesPattern.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

}  // namespace

class frmMainShow : public WindowTest {
protected:
    // The user works in another window from now on.
    void GoElsewhere() {
        Elsewhere_.show();
        QApplication::setActiveWindow(&Elsewhere_);
    }
    void ComeBack() const { QApplication::setActiveWindow(Window.get()); }

private:
    QWidget Elsewhere_;
};

TEST_F(frmMainShow, TheStatusBlinksEvery800MillisecondsWhileItWaits) {
    Start();
    std::vector<bool> shown;
    for (const auto moment : {700ms, 900ms, 1500ms, 1700ms, 2300ms, 2500ms}) {
        At(moment, [&] { shown.push_back(!Find("lblStatus")->isHidden()); });
    }
    At(3s, [this] { Click("cmdQuit"); });
    Download(Image());
    EXPECT_THAT(shown, testing::ElementsAre(true, false, false, true, true, false));
}

TEST_F(frmMainShow, ABlinkingStatusMovesNothing) {
    Start();
    const QRect bar = Find("PercentBar1")->geometry();
    At(900ms, [&] { EXPECT_EQ(Find("PercentBar1")->geometry(), bar); });
    At(3s, [this] { Click("cmdQuit"); });
    Download(Image());
}

TEST_F(frmMainShow, TheStatusBlinksNoMoreOnceTheUnitIsReady) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Getting ready", [this] { EXPECT_FALSE(Find("lblStatus")->isHidden()); });
    Download(Image());
}

TEST_F(frmMainShow, TheTimeLeftIsShownWhileItWaits) {
    Start();
    At(10s, [this] {
        EXPECT_FALSE(Find("lblTiming")->isHidden());
        EXPECT_THAT(TextOf("lblTiming"), MatchesPattern("Timeout: 5[01] seconds"));
        Click("cmdQuit");
    });
    Download(Image());
    EXPECT_TRUE(Find("lblTiming")->isHidden());
}

TEST_F(frmMainShow, TheCaptionNamesTheFileThatIsProgrammed) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block", [this] { EXPECT_EQ(Caption(), "Burnwick - Programming unit.bin..."); });
    Download(Image());
}

TEST_F(frmMainShow, TheCaptionNamesTheFileThatIsRead) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Reading block", [this] { EXPECT_EQ(Caption(), "Burnwick - Uploading read.bin..."); });
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Caption(), "Burnwick - Uploading was completed successfully");
}

TEST_F(frmMainShow, StatusAndBarFollowTheBlocks) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 512 ", [this] {
        EXPECT_EQ(Status(), "Sending block 512 of 1024 blocks");
        EXPECT_EQ(BarText(), "50%");
    });
    Download(Image());
}

TEST_F(frmMainShow, TheBarIsNavyOnWhiteWhileBlocksMove) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 512 ", [this] {
        EXPECT_EQ(Find<PercentBar>("PercentBar1")->BackColor(), QColor(Qt::white));
        EXPECT_EQ(Find<PercentBar>("PercentBar1")->ForeColor(), QColor(0, 0, 0x80));
    });
    Download(Image());
}

TEST_F(frmMainShow, TheBarShowsNothingBeforeTheFirstBlock) {
    Start();
    At(1s, [this] {
        const auto* const bar = Find<PercentBar>("PercentBar1");
        EXPECT_EQ(bar->BackColor(), bar->ForeColor());
        Click("cmdQuit");
    });
    Download(Image());
}

TEST_F(frmMainShow, AnUploadIsMarkedAsProgrammingToo) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Reading block", [this] { EXPECT_EQ(Settings["Status/Programming"], "Yes"); });
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(Settings["Status/Programming"], "No");
}

TEST_F(frmMainShow, CancelIsDisabledOnceBlocksAreSentOrRead) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block", [this] { EXPECT_FALSE(Find("cmdQuit")->isEnabled()); });
    Download(Image());
    WhenStatus("Reading block", [this] { EXPECT_FALSE(Find("cmdQuit")->isEnabled()); });
    Upload(1, Folder / "read.bin");
}

TEST_F(frmMainShow, ShiftSDoesNothingWhileIdle) {
    ConnectUnitOfSize(ImageSize);
    Start();
    // A status with the word in it, left by a file of that name.
    Download(Folder.Write("block.bin", SampleImage(1000)));
    QTest::keyClick(Find<QPlainTextEdit>("txtDisplay"), Qt::Key_S, Qt::ShiftModifier);
    Download(Image());
    EXPECT_EQ(Status(), Programmed);
}

TEST_F(frmMainShow, ATimeoutIsTheCaptionAndTheStatus) {
    Start();
    Download(Image());
    EXPECT_EQ(Status(), "Timeout.");
    EXPECT_EQ(Caption(), "Burnwick - Timeout");
}

TEST_F(frmMainShow, TheCaptionTellsTheTimeLeftToAUserWhoIsElsewhere) {
    Start();
    At(5s, [this] { GoElsewhere(); });
    At(10s, [this] { EXPECT_THAT(Caption(), MatchesPattern("Burnwick - 5[01] seconds")); });
    At(11s, [this] { ComeBack(); });
    At(12s, [this] {
        EXPECT_EQ(Caption(), "Burnwick");
        Click("cmdQuit");
    });
    Download(Image());
}

TEST_F(frmMainShow, TheCaptionTellsThePercentageToAUserWhoIsElsewhere) {
    ConnectUnitOfSize(ImageSize);
    Start();
    std::string caption;
    WhenStatus("Sending block 600", [&, this] {
        GoElsewhere();
        Loop.Stall(150ms);  // the tick that rewrites it
    });
    WhenStatus("Sending block 606", [&, this] { caption = Caption(); });
    Download(Image());
    EXPECT_EQ(caption, "Burnwick - 58%");
}

TEST_F(frmMainShow, TheOutcomeIsInTheCaptionWhereverTheUserIs) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 600", [this] { GoElsewhere(); });
    Download(Image());
    EXPECT_EQ(Caption(), "Burnwick - Programming was completed successfully");
}

TEST_F(frmMainShow, AUserWhoComesBackDuringAReadBackFindsTheOutcomeOfTheProgramming) {
    ConnectUnitOfSize(ImageSize);
    Start();
    std::string caption;
    WhenStatus("Waiting...", [this] {
        GoElsewhere();
        Loop.Stall(150ms);  // the tick that rewrites the caption
    });
    WhenStatus("Verifying block 300", [this] {
        ComeBack();
        Loop.Stall(150ms);
    });
    WhenStatus("Verifying block 306", [&, this] { caption = Caption(); });
    DownloadAndAnswer(QMessageBox::Yes);
    EXPECT_EQ(caption, "Burnwick - Programming was completed successfully");
}

TEST_F(frmMainShow, TheWindowFlashesUntilTheUserIsBack) {
    ConnectUnitOfSize(ImageSize);
    Start();
    WhenStatus("Sending block 600", [this] { GoElsewhere(); });
    Download(Image());
    Pass(1s);
    EXPECT_EQ(Flashes, 3);
    ComeBack();
    Pass(1s);
    EXPECT_EQ(Flashes, 3);
    GoElsewhere();
    Pass(1s);
    EXPECT_EQ(Flashes, 3);
}

TEST_F(frmMainShow, RateAndTimeLeftStandBesideTheTiming) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    WhenStatus("Sending block 400", [this] {
        EXPECT_THAT(TextOf("lblRate"), MatchesPattern("1[01]\\.[0-9] KB/s, 0:1[0-9] left"));
    });
    Download(Image());
    EXPECT_EQ(TextOf("lblRate"), "");
}

TEST_F(frmMainShow, NoRateOfAnEarlierTransferStandsBesideTheNextWait) {
    Settings["Options/Verify"] = "1";
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    WhenStatus("Waiting...", [this] {
        EXPECT_EQ(TextOf("lblRate"), "");
        PullOut();
    });
    At(Loop.Time() + 60s, [this] { EXPECT_EQ(TextOf("lblRate"), ""); });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
}

TEST_F(frmMainShow, RateAndTimeLeftStandThereDuringAVerificationToo) {
    Settings["Options/Verify"] = "1";
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    WhenStatus("Verifying block 400", [this] {
        EXPECT_THAT(TextOf("lblRate"), MatchesPattern("1[01]\\.[0-9] KB/s, 0:1[0-9] left"));
    });
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
}

TEST_F(frmMainShow, AWholeDownloadIsReadWithoutScrolling) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_FALSE(Find<QPlainTextEdit>("txtDisplay")->verticalScrollBar()->isVisible());
}

TEST_F(frmMainShow, TheSummaryTellsWhatIsProgrammed) {
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_EQ(Find<QGroupBox>("fraSummary")->title(), "Model: VX-1600");
    EXPECT_EQ(Find("fraSummary")->accessibleDescription(), "Model: VX-1600");
    EXPECT_EQ(TextOf("lblVersion"), "4.10");
    EXPECT_EQ(TextOf("lblLanguage"), "English/French");
    EXPECT_EQ(TextOf("lblDateStamp"), "07/22/2004 15:05:09");
    EXPECT_EQ(TextOf("lblChecksum"), "5609");
}

TEST_F(frmMainShow, AnImageWithoutAModelHasThePlainTitle) {
    Start();
    At(1s, [this] { Click("cmdQuit"); });
    Download(Folder.Write("plain.bin", AnyBytes(65'536)));
    EXPECT_EQ(Find<QGroupBox>("fraSummary")->title(), "Summary:");
}

TEST_F(frmMainShow, TheDebugBoxShowsTheWholeChecksum) {
    Debug = true;
    ConnectUnitOfSize(ImageSize);
    Start();
    Download(Image());
    EXPECT_EQ(TextOf("lblChecksum").size(), 7U) << TextOf("lblChecksum");
    EXPECT_THAT(TextOf("lblChecksum"), testing::EndsWith("5609"));
    Find<QCheckBox>("chkDebug")->setChecked(false);
    Download(Image());
    EXPECT_EQ(TextOf("lblChecksum"), "5609");
}

TEST_F(frmMainShow, ANewerImageShowsItsWholeChecksum) {
    Start();
    At(1s, [this] { Click("cmdQuit"); });
    Download(Folder.Write("newer.bin", SampleType4Image()));
    EXPECT_EQ(TextOf("lblChecksum").size(), 8U);
    EXPECT_EQ(Find<QGroupBox>("fraSummary")->title(), "Model: VX-3200");
}

TEST_F(frmMainShow, AnUploadEmptiesTheSummaryAndFillsItFromWhatItHasRead) {
    simulator::UnitOptions options;
    options.Flash = SampleImage(ImageSize);
    Connect(std::move(options));
    Start();
    WhenStatus("Reading block", [this] {
        EXPECT_EQ(TextOf("lblVersion"), "");
        EXPECT_EQ(Find<QGroupBox>("fraSummary")->title(), "Summary:");
    });
    Upload(1, Folder / "read.bin");
    EXPECT_EQ(TextOf("lblVersion"), "4.10");
    EXPECT_EQ(Find<QGroupBox>("fraSummary")->title(), "Model: VX-1600");
}

TEST_F(frmMainShow, TheDisplayFollowsItsLastLine) {
    Settings["Options/Verify"] = "1";
    ConnectUnitOfSize(ImageSize);
    Start();
    User.TypeFile(Image());
    User.ClickInBox(QMessageBox::Yes);
    Click("cmdDownload");
    const auto* const display = Find<QPlainTextEdit>("txtDisplay");
    EXPECT_TRUE(display->textCursor().atEnd());
    EXPECT_TRUE(display->rect().contains(display->cursorRect().topLeft()));
}

}  // namespace burnwick::test
