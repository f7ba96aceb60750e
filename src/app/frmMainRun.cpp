// A run from the user's click to its result.
#include <exception>
#include <system_error>
#include <utility>

#include "app/DirFile.h"
#include "app/frmMain.h"
#include "app/modSystemMenu.h"
#include "forms/FileDialog.h"
#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "image/modBinFileInfo.h"
#include "log/ActivityLog.h"
#include "platform/Utf8Path.h"
#include "ports/modFindCOMPorts.h"
#include "job/Verification.h"
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
    SerialFlash1.Execute(Method::Cancel);
    CancelRequested = true;
}

void frmMain::RunFlashCommand() {
    if (Running_) {
        return;
    }
    Running_ = true;
    Texts_ = {};
    Result_ = {};
    try {
        Run();
    } catch (const std::exception& error) {
        if (!Texts_.Verifying) {
            Result_ = SerialFlash1.LastRun();
        }
        BackToIdle();
        SystemMenu_->SetCloseGreyed(false);
        Services_.Store("Status", "Programming", "No");
        LogRun();
        MsgBox(this, QMessageBox::Warning, ErrorBox(error.what()));
    }
    Running_ = false;
    ChosenFile_.clear();
    if (CloseWhenDone_) {
        Unload();
    }
}

void frmMain::Run() {
    if (MSComm1.PortOpen()) {
        MSComm1.SetPortOpen(false);
    }
    SetCaption(Title_);
    if (!ChooseFile()) {
        return;
    }
    const auto awake = Services_.InhibitSleep("A unit's flash memory is being programmed or read");
    PrepareWindow();
    PrepareEngine();
    if (const CommResult error = TestPortBeforeReplacing()) {
        TrapCommError(*error);
        return;
    }
    if (TransferMode == TransferModes::Upload) {
        SerialFlash1.SetUploadBlock(UploadBlocks);
        SerialFlash1.Execute(Method::Upload);
    } else {
        SerialFlash1.Execute(Method::Download);
    }
    Result_ = SerialFlash1.LastRun();
    if (Result_.PortError) {
        TrapCommError(*Result_.PortError);
        return;
    }
    if (TransferMode == TransferModes::Download
        && OffersVerification(Result_, Services_.Setting("Options", "Verify"), CancelRequested)
        && MsgBox(this, QMessageBox::Information, VerificationQuestion(), QMessageBox::Yes | QMessageBox::No)
               == QMessageBox::Yes) {
        Verify();
    }
    EndOfRun();
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
                                         Services_.Setting("Path", "LastPath"));
    }
    return !ImageFileName.empty() && AcceptImage();
}

bool frmMain::AcceptImage() {
    if (const std::string refusal = modBinFileInfo::CheckFileFormat(ImageFileName); !refusal.empty()) {
        RefuseImage(refusal, refusal);
        return false;
    }
    // Twice on purpose: what is shown is the file as it is when the run begins, and no longer being copied.
    if (!ShowSoftwareSummary(ImageFileName) || !ShowSoftwareSummary(ImageFileName)) {
        const std::string refusal = "File is not supported.";
        RefuseImage(refusal, refusal + "\n");
        return false;
    }
    return true;
}

// A file that cannot even be read is told with the reason: its format is not what is wrong with it.
void frmMain::RefuseImage(const std::string& status, const std::string& display) {
    const std::string trouble = modBinFileInfo::ReadTrouble(ImageFileName);
    const std::string lineBreak = display.ends_with('\n') ? "" : "\n";
    const std::string why = trouble.empty() ? "" : lineBreak + ImageFileName + ": " + trouble + ".\n";
    SetStatus(status);
    Ui_->txtDisplay->setPlainText(QString::fromStdString(display + why));
}

bool frmMain::ChooseUploadFile() {
    frmChipSelect chipSelect(Services_.Setting, Services_.Store, this);
    chipSelect.exec();
    UploadBlocks = static_cast<std::int16_t>(chipSelect.UploadBlocks());
    if (UploadBlocks == 0) {
        return false;
    }
    ImageFileName = AskForFileToSave(this, Services_.Setting("Path", "LastPath"));
    if (ImageFileName.empty()) {
        return false;
    }
    ClearSoftwareSummary();
    return true;
}

void frmMain::PrepareWindow() {
    Ui_->txtDisplay->clear();
    ForgetProgress();
    Services_.Store("Path", "LastPath", DirFile::Folder(ImageFileName));
    CaptionSaved = false;
    Ui_->cmdDownload->setEnabled(false);
    Ui_->cmdUpload->setEnabled(false);
    SetMenusEnabled(false);
    SetQuitCaption("&Cancel");
    Ui_->cmdQuit->setFocus();
    SetStatus(Texts_.Status);
    tmrStatus->SetEnabled(true);
    tmrTimeOut->SetEnabled(true);
    FadeBar();
    Ui_->PercentBar1->SetValue(0);
}

// An upload deletes the file that it replaces before it opens the port: a port that is busy must not cost a
// backup.
CommResult frmMain::TestPortBeforeReplacing() {
    std::error_code ignored;
    const bool replaces =
        TransferMode == TransferModes::Upload && std::filesystem::exists(Utf8Path(ImageFileName), ignored);
    return replaces ? modFindCOMPorts::TestPort(MSComm1, MSComm1.CommPort()) : std::nullopt;
}

void frmMain::PrepareEngine() {
    SerialFlash1.SetFileName(ImageFileName);
    SerialFlash1.SetCommPort(static_cast<std::uint8_t>(MSComm1.CommPort()));
    SerialFlash1.SetBaudRate(GetBaudRateSetting(Services_.Setting));
}

// Whatever comes of it, the programming itself has succeeded: the verdict is a line of its own.
void frmMain::Verify() {
    Ui_->cmdQuit->setEnabled(true);
    Ui_->cmdQuit->setFocus();
    ForgetProgress();
    Append(Texts_.BeginVerification());
    SetStatus(Texts_.Status);
    const auto blocks = BlocksToReadBack(ImageFileName);
    const auto readBack = VerificationFile::Claim(Services_.ProgramFolder, Utf8Path(ImageFileName));
    if (!blocks) {
        Append(Texts_.EndVerification("Verifying error: " + modBinFileInfo::FileNameOf(ImageFileName)
                                      + " cannot be read back."));
    } else if (!readBack) {
        Append(Texts_.EndVerification("Verifying error: no file can be made in "
                                      + Utf8Text(Services_.ProgramFolder) + "."));
    } else {
        SerialFlash1.SetFileName(Utf8Text(readBack->Path()));
        SerialFlash1.SetUploadBlock(*blocks);
        SerialFlash1.Execute(Method::Upload);
        Judge(readBack->Path());
    }
    SetCaption("Burnwick - Programming was completed successfully");
    Texts_.Status = Programmed;
    SetStatus(Programmed);
    ShowWorkingColors();
    ShowInBar("100%", 100);
}

void frmMain::Judge(const std::filesystem::path& readBack) {
    std::error_code ignored;
    if (const CommResult error = SerialFlash1.LastRun().PortError) {
        ShowCommError(*error);
    } else if (Texts_.VerifyCanceled) {
        Append(Texts_.EndVerification("Verifying was canceled."));
    } else if (std::filesystem::exists(readBack, ignored)) {
        SetStatus("Please wait for a few seconds...");
        ShowInBar("Please wait...", 0);
        Ui_->lblStatus->repaint();
        Ui_->PercentBar1->repaint();
        Append(Texts_.EndVerification(JudgeReadBack(ImageFileName, readBack).Result));
    }
}

void frmMain::EndOfRun() {
    Services_.Beep();
    if (TransferMode == TransferModes::Download && SerialFlash1.LastRun().Elapsed) {
        modSystemMenu::ToggleCloseCommand(*SystemMenu_);
    }
    BackToIdle();
    tmrFlashWindow->SetEnabled(true);
    if (!IsActive()) {
        Services_.Notify(Title_, Announcement(Texts_));
    }
    if (Result_.Outcome == Outcome::TransmittingError && !CloseWhenDone_) {
        MsgBox(this, QMessageBox::Warning, TransmittingErrorBox());
    }
    LogRun();
    AddRecentFile(ImageFileName);
    Services_.Store("Status", "Programming", "No");
}

void frmMain::BackToIdle() {
    Ui_->cmdDownload->setEnabled(true);
    Ui_->cmdUpload->setEnabled(true);
    SetQuitCaption("&Quit");
    Ui_->cmdQuit->setEnabled(true);
    SetMenusEnabled(true);
    Ui_->cmdDownload->setFocus();
    StartedByUser = false;
    CancelRequested = false;
    tmrStatus->SetEnabled(false);
    Ui_->lblStatus->setVisible(true);
    Ui_->lblTiming->setVisible(false);
    ShowText(*Ui_->lblRate, "");
    tmrTimeOut->SetEnabled(false);
    RestoreCaption();
}

void frmMain::LogRun() {
    ActivityRecord record = RecordOf(Result_, Texts_, ImageFileName, Summary_);
    record.IsUpload = TransferMode == TransferModes::Upload;
    WriteActivityLog(Services_.ProgramFolder, Services_.Setting("Options", "LogOption"), record,
                     Services_.Loop.Now());
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
    Services_.Store("Status", "Programming", "No");
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
