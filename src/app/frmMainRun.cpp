// A run from the user's click to its result.
#include <array>
#include <exception>
#include <system_error>
#include <utility>
#include <variant>

#include "app/DirFile.h"
#include "app/frmMain.h"
#include "app/modSystemMenu.h"
#include "forms/FileDialog.h"
#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "log/ActivityLog.h"
#include "platform/files/Utf8Path.h"
#include "settings/frmChipSelect.h"
#include "ui_frmMain.h"

namespace burnwick {

namespace {

constexpr const char* Programmed = "Programming was completed successfully.";

}  // namespace

void frmMain::cmdDownload_Click() {
    if (Running_) {
        return;
    }
    StartedByUser = true;
    TransferMode = TransferModes::Download;
    RunFlashCommand();
}

void frmMain::cmdUpload_Click() {
    if (Running_) {
        return;
    }
    StartedByUser = true;
    TransferMode = TransferModes::Upload;
    RunFlashCommand();
}

// Programs the image without a dialog.
void frmMain::DownloadFile(const std::string& path) {
    if (Running_) {
        return;
    }
    StartedByUser = true;
    TransferMode = TransferModes::Download;
    ChosenFile_ = path;
    RunFlashCommand();
}

void frmMain::cmdQuit_Click() {
    if (Ui_->cmdQuit->text() == "&Quit") {
        Unload();
    } else {
        SetQuitCaption("&Quit");
        CancelRun();
    }
}

void frmMain::CancelRun() {
    if (JobRuns_) {
        Job_->Cancel();
    }
}

void frmMain::RunFlashCommand() {
    if (Running_) {
        return;
    }
    Running_ = true;
    Texts_ = {};
    Result_ = {};
    try {
        if (!BeginRun()) {
            EndCommand();
        }
    } catch (const std::exception& error) {
        JobRuns_ = false;
        Awake_.reset();
        ReportUnforeseen(error.what(), Result_);
        EndCommand();
    }
}

// False when there is nothing to run.
bool frmMain::BeginRun() {
    if (MSComm1.PortOpen()) {
        MSComm1.SetPortOpen(false);
    }
    TitleBar_.SetCaption(Title_);
    if (!ChooseFile()) {
        return false;
    }
    PrepareWindow();
    Awake_ = Services_.InhibitSleep("A unit's flash memory is being programmed or read");
    Job_ = Services_.NewJob(Order(), [this](const JobEvent& event) { Show(event); });
    JobRuns_ = true;
    Job_->Start();
    return true;
}

void frmMain::EndCommand() {
    Running_ = false;
    ChosenFile_.clear();
    if (CloseWhenDone_) {
        Unload();
    }
}

bool frmMain::ChooseFile() {
    const bool chosen = TransferMode == TransferModes::Upload ? ChooseUploadFile() : ChooseImage();
    if (ImageFileName.empty()) {
        SetMenusEnabled(true);
        StartedByUser = false;
    }
    return chosen;
}

bool frmMain::ChooseImage() {
    if (!Services_.CommandLine.empty() && !StartedByUser) {
        std::error_code error;
        const auto path =
            std::filesystem::absolute(Utf8Path(DirFile::CleanPath(Services_.CommandLine)), error);
        ImageFileName = Utf8Text(path);
    } else if (!ChosenFile_.empty()) {
        ImageFileName = std::exchange(ChosenFile_, {});
    } else {
        ImageFileName = AskForFileToOpen(this, "Open Burnwick File", "Burnwick File (*.bin)",
                                         Services_.Settings.Value(Setting::LastPath));
    }
    return !ImageFileName.empty() && AcceptImage();
}

bool frmMain::AcceptImage() {
    auto read = modBinFileInfo::ReadImageFile(ImageFileName);
    if (const auto* const refusal = std::get_if<modBinFileInfo::ImageRefusal>(&read)) {
        RefuseImage(*refusal);
        return false;
    }
    Image_ = std::get<Image>(std::move(read));
    ShowSoftwareSummary(Image_.Information);
    return true;
}

void frmMain::RefuseImage(const modBinFileInfo::ImageRefusal& refusal) {
    const std::string why =
        refusal.Trouble.empty() ? "" : "\n" + ImageFileName + ": " + refusal.Trouble + ".\n";
    SetStatus(refusal.Status);
    Ui_->txtDisplay->setPlainText(QString::fromStdString(refusal.Status + why));
}

bool frmMain::ChooseUploadFile() {
    frmChipSelect chipSelect(Services_.Settings, this);
    chipSelect.exec();
    UploadBlocks = static_cast<std::int16_t>(chipSelect.UploadBlocks());
    if (UploadBlocks == 0) {
        return false;
    }
    ImageFileName = AskForFileToSave(this, Services_.Settings.Value(Setting::LastPath));
    if (ImageFileName.empty()) {
        return false;
    }
    Image_ = {};
    Summary_.Clear();
    return true;
}

void frmMain::PrepareWindow() {
    Ui_->txtDisplay->clear();
    ForgetProgress();
    Services_.Settings.Store(Setting::LastPath, DirFile::Folder(ImageFileName));
    Ui_->cmdDownload->setEnabled(false);
    Ui_->cmdUpload->setEnabled(false);
    SetMenusEnabled(false);
    SetQuitCaption("&Cancel");
    Ui_->cmdQuit->setFocus();
    SetStatus(Texts_.Status);
    tmrStatus->SetEnabled(true);
    TitleBar_.BeginRun();
    FadeBar();
    Ui_->PercentBar1->SetValue(0);
}

FlashOrder frmMain::Order() const {
    const bool isUpload = TransferMode == TransferModes::Upload;
    FlashOrder order{.What = isUpload ? FlashOrder::Kind::Upload : FlashOrder::Kind::Download,
                     .FileName = ImageFileName,
                     .Image = Image_};
    order.Blocks = UploadBlocks;
    order.Port = MSComm1.CommPort();
    order.Device = DeviceOf(order.Port, PortDevices(Services_.Settings));
    order.BaudRate = GetBaudRateSetting(Services_.Settings.Value(Setting::BaudRate));
    order.Verify = FlashOrder::Verification::Ask;
    order.ProgramFolder = Services_.ProgramFolder;
    order.Trace = Services_.Debug && Services_.Trace;
    return order;
}

// The setting counts as it is at the end of the programming.
void frmMain::AskForVerification() {
    if (Services_.Settings.Value(Setting::Verify) != "1") {
        Job_->Answer(false);
        return;
    }
    CallUser();
    // Some desktop styles would choose No for Enter.
    const auto answer = MsgBox(this, QMessageBox::Information, VerificationQuestion(),
                               QMessageBox::Yes | QMessageBox::No, {}, QMessageBox::Yes);
    Job_->Answer(answer == QMessageBox::Yes);
}

// To a window in the background: a beep, the flashing title, a notification.
void frmMain::CallUser() {
    Services_.Beep();
    TitleBar_.CallUser();
    if (!TitleBar_.IsActive()) {
        Services_.Notify(Title_, Announcement(Texts_));
    }
}

void frmMain::EndOfJob(const JobResult& job) {
    JobRuns_ = false;
    Awake_.reset();
    Result_ = job.Transfer;
    if (!job.Unforeseen.empty()) {
        ReportUnforeseen(job.Unforeseen, job.Transfer);
    } else if (job.Transfer.PortError) {
        TrapCommError(*job.Transfer.PortError);
    } else {
        EndOfRun(job);
    }
    EndCommand();
}

void frmMain::EndOfRun(const JobResult& job) {
    if (job.VerificationBegun) {
        EndOfVerification(job);
    }
    if (TransferMode == TransferModes::Download && job.LastRun().Elapsed) {
        modSystemMenu::ToggleCloseCommand(*SystemMenu_);
    }
    BackToIdle();
    CallUser();
    if (job.Transfer.Outcome == Outcome::TransmittingError && !CloseWhenDone_) {
        MsgBox(this, QMessageBox::Warning, TransmittingErrorBox());
    }
    LogRun(job.Transfer);
    AddRecentFile(ImageFileName);
    Services_.Settings.Store(Setting::Programming, "No");
}

// Whatever came of it, the programming itself has succeeded: the verdict is a line of its own.
void frmMain::EndOfVerification(const JobResult& job) {
    if (job.ReadBack && job.ReadBack->PortError) {
        ShowCommError(*job.ReadBack->PortError);
    }
    if (job.ImageChanged) {
        Append(std::array{ImageChangedText(Image_)});
    }
    TitleBar_.SetCaption("Burnwick - Programming was completed successfully");
    Texts_.Status = Programmed;
    SetStatus(Programmed);
    ShowWorkingColors();
    ShowInBar("100%", 100);
}

void frmMain::ReportUnforeseen(const std::string& error, const RunResult& run) {
    BackToIdle();
    SystemMenu_->SetCloseGreyed(false);
    Services_.Settings.Store(Setting::Programming, "No");
    LogRun(run);
    MsgBox(this, QMessageBox::Warning, ErrorBox(error));
}

void frmMain::BackToIdle() {
    Ui_->cmdDownload->setEnabled(true);
    Ui_->cmdUpload->setEnabled(true);
    SetQuitCaption("&Quit");
    Ui_->cmdQuit->setEnabled(true);
    SetMenusEnabled(true);
    Ui_->cmdDownload->setFocus();
    StartedByUser = false;
    tmrStatus->SetEnabled(false);
    Ui_->lblStatus->setVisible(true);
    Ui_->lblTiming->setVisible(false);
    ShowText(*Ui_->lblRate, "");
    TitleBar_.EndRun();
}

void frmMain::LogRun(const RunResult& run) {
    ActivityRecord record = RecordOf(run, Texts_, ImageFileName, Summary_.Texts());
    record.IsUpload = TransferMode == TransferModes::Upload;
    WriteActivityLog(Services_.ProgramFolder, LogOption(Services_.Settings), record, Services_.Loop.Now());
}

// A run that never opened its port leaves neither a record nor a recent file.
void frmMain::TrapCommError(const CommError& error) {
    if (MSComm1.PortOpen()) {
        MSComm1.SetPortOpen(false);
    }
    BackToIdle();
    SetStatus("CommPort COM" + std::to_string(MSComm1.CommPort()) + " is not available.");
    ShowCommError(error);
    Ui_->txtDisplay->setPlainText("CommPort is not available.\n");
    Services_.Settings.Store(Setting::Programming, "No");
    if (!CloseWhenDone_) {
        mnuToolCOMPortSetting_Click();
    }
}

// Why the port does not open, and what to do about it, stands below the message itself.
void frmMain::ShowCommError(const CommError& error) {
    const char* const stop = error.Description.ends_with('?') ? "" : ".";
    MsgBox(this, QMessageBox::Warning, CommPortErrorBox(MSComm1.CommPort()), QMessageBox::Ok,
           error.Description + stop);
}

void frmMain::SetMenusEnabled(bool enabled) {
    Ui_->mnuFile->setEnabled(enabled);
    Ui_->mnuTools->setEnabled(enabled);
    Ui_->mnuHelp->setEnabled(enabled);
}

}  // namespace burnwick
