#pragma once

#include <QMainWindow>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "app/RecentMenu.h"
#include "app/SummaryPanel.h"
#include "app/TitleBar.h"
#include "app/WindowServices.h"
#include "image/Image.h"
#include "job/BoxTexts.h"
#include "job/Job.h"
#include "job/RunTexts.h"
#include "job/TransferRate.h"
#include "job/WindowTexts.h"
#include "platform/serial/MSComm.h"
#include "platform/window/SystemMenu.h"

namespace burnwick {

namespace Ui {
class frmMain;
}

// The main window: the commands Download and Upload, what a run shows of itself, and the way to every other
// dialog. Closing it ends the program.
//
// A run is a job, whose events the window turns into what it shows, and its question into a box.
// RunFlashCommand returns when the job has begun; its events come out of the event loop, on the window's
// thread.
class frmMain final : public QMainWindow {
    Q_OBJECT

public:
    // The services must outlive the window.
    explicit frmMain(WindowServices& services);
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;
    ~frmMain() override;

    // Makes the window ready, shows it, and programs the image that the command line names. False when this
    // copy of the program has to end at once, because another one has come forward.
    bool Form_Load();

    // Ends the program; a run in progress is cancelled first.
    void Unload();

    // True while the unit is programmed or read.
    bool IsRunning() const { return JobRuns_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class TransferModes : std::int16_t { Upload = 1, Download = 2 };

    // frmMain.cpp: the window itself, start-up and shut-down.
    void Layout();
    void ConnectCommands();
    bool SendsBlocks() const;
    void RefuseToClose();
    void Form_Unload();
    void FillMissingSettings() const;
    void CheckStartupPort();
    void ComeForward();
    void AddRecentFile(const std::string& path);
    void mnuFileMRF_Click(const std::string& path);

    // frmMainDialogs.cpp: the commands that only open other dialogs.
    bool IsOfEquipmentMaker() const;
    void mnuFileCompareFiles_Click();
    void mnuToolCOMPortSetting_Click();
    void mnuToolViewLog_Click();
    void mnuToolOptions_Click();
    void mnuHelpBurnwickHelp_Click();
    void mnuHelpAbout_Click();

    // frmMainRun.cpp: a run from the click to its result.
    void cmdDownload_Click();
    void cmdUpload_Click();
    void cmdQuit_Click();
    void DownloadFile(const std::string& path);
    void RunFlashCommand();
    bool BeginRun();
    void EndCommand();
    bool ChooseFile();
    bool ChooseImage();
    bool ChooseUploadFile();
    bool AcceptImage();
    void RefuseImage(const modBinFileInfo::ImageRefusal& refusal);
    void PrepareWindow();
    FlashOrder Order() const;
    void AskForVerification();
    void EndOfJob(const JobResult& job);
    void EndOfRun(const JobResult& job);
    void EndOfVerification(const JobResult& job);
    void CallUser();
    void BackToIdle();
    void LogRun(const RunResult& run);
    void ReportUnforeseen(const std::string& error, const RunResult& run);
    void TrapCommError(const CommError& error);
    void ShowCommError(const CommError& error);
    void CancelRun();
    void SetMenusEnabled(bool enabled);

    // frmMainShow.cpp: what a run shows of itself.
    void Show(const JobEvent& event);
    void SerialFlash1_Progress(int block, int totalBlock);
    void SerialFlash1_Message(const RunLine& line);
    void SerialFlash1_Timing(const RunTiming& timing);
    void BeginTransfer();
    void BeginVerification();
    void BeginComparison();
    void ForgetProgress();
    void tmrStatus_Timer();
    void SetQuitCaption(const QString& caption);
    void SetStatus(const std::string& text);
    void Append(std::span<const std::string> lines);
    void ShowWorkingColors();
    void FadeBar();
    void ShowInBar(const QString& caption, int value);
    void ShowSoftwareSummary(const modBinFileInfo::BinFileInfo& information);
    RunKind Kind() const;

    WindowServices& Services_;
    std::unique_ptr<Ui::frmMain> Ui_;
    std::unique_ptr<SystemMenu> SystemMenu_;
    std::unique_ptr<SingleInstance> Copies_;

    MSComm MSComm1;
    std::unique_ptr<Job> Job_;  // of the latest run
    std::unique_ptr<SleepInhibitor> Awake_;
    std::unique_ptr<Timer> tmrStatus;

    std::string Title_;
    TransferModes TransferMode = TransferModes::Download;
    bool StartedByUser = false;
    std::string
        ChosenFile_;  // of the recent files, or dropped: what the next run programs, and that one only
    std::int16_t UploadBlocks = 0;
    std::string ImageFileName;
    Image Image_;  // of the latest download

    bool Running_ = false;  // from the click that starts a run until its result has been shown
    bool JobRuns_ = false;
    bool Unloading_ = false;      // leaving is the user's own wish, not the window manager's
    bool CloseWhenDone_ = false;  // the window closes when the run has ended
    RunTexts Texts_;              // of the latest run; labels and display show them
    RunResult Result_;            // of its transfer, a read-back apart
    SummaryPanel Summary_;
    RecentMenu Recent_;
    TitleBar TitleBar_;
    TransferRate Rate_;
    int Percent = 0;
};

}  // namespace burnwick
