// What a run shows of itself: status, timing, bar and caption; and the summary of its image.
#include <QApplication>
#include <QTextCursor>
#include <variant>

#include "app/frmMain.h"
#include "app/modSystemMenu.h"
#include "forms/FormParts.h"
#include "image/modBinFileInfo.h"
#include "ui_frmMain.h"

namespace burnwick {

namespace {

constexpr QColor White(0xFF, 0xFF, 0xFF);
constexpr QColor Navy(0x00, 0x00, 0x80);

}  // namespace

void frmMain::Show(const JobEvent& event) {
    std::visit(Overloaded{
                   [this](const RunLine& line) { SerialFlash1_Message(line); },
                   [this](const RunTiming& timing) { SerialFlash1_Timing(timing); },
                   [this](const BlockProgress& progress) {
                       SerialFlash1_Progress(progress.Block, progress.TotalBlock);
                   },
                   [this](const TraceLine& line) { Services_.Trace(line.Text); },
                   [this](const VerificationOffer&) { AskForVerification(); },
                   [this](const VerificationBegins&) { BeginVerification(); },
                   [this](const ComparisonBegins&) { BeginComparison(); },
                   [this](const VerificationEnds& end) { Append(Texts_.EndVerification(end.Result)); },
                   [this](const JobResult& job) { EndOfJob(job); },
               },
               event);
}

void frmMain::SerialFlash1_Progress(int block, int totalBlock) {
    if (block == 0) {
        BeginTransfer();
    }
    Rate_.Add(Services_.Loop.MillisecondClock(), block, totalBlock);
    if (block == 0) {
        return;
    }
    Percent = PercentOf(block, totalBlock);
    // A hundred times in a run, and not with every block: who hears the bar instead of seeing it is told
    // each.
    if (Ui_->PercentBar1->Value() != Percent) {
        Ui_->PercentBar1->SetValue(Percent);
    }
    Texts_.TakeProgress(BlockText(Kind(), block, totalBlock));
    SetStatus(Texts_.Status);
}

void frmMain::BeginTransfer() {
    TitleBar_.RestoreCaption();
    ForgetProgress();
    ShowWorkingColors();
    ShowInBar(Ui_->PercentBar1->objectName(), 0);
    if (TransferMode == TransferModes::Download) {
        modSystemMenu::ToggleCloseCommand(*SystemMenu_);
    }
    if (!Texts_.Verifying) {
        Services_.Settings.Store(Setting::Programming, "Yes");
        // Or the display would get the focus, and hear each key that was meant for Cancel.
        Ui_->picMain->setFocus();
        Ui_->cmdQuit->setEnabled(false);
    }
}

void frmMain::BeginVerification() {
    Ui_->cmdQuit->setEnabled(true);
    Ui_->cmdQuit->setFocus();
    ForgetProgress();
    Append(Texts_.BeginVerification());
    SetStatus(Texts_.Status);
}

// Painted at once: the comparison holds the window up.
void frmMain::BeginComparison() {
    SetStatus("Please wait for a few seconds...");
    ShowInBar("Please wait...", 0);
    Ui_->lblStatus->repaint();
    Ui_->PercentBar1->repaint();
}

// What was shown of an earlier transfer says nothing of the next one.
void frmMain::ForgetProgress() {
    Rate_ = {};
    Percent = 0;
    ShowText(*Ui_->lblRate, "");
}

void frmMain::SerialFlash1_Message(const RunLine& line) {
    const RunKind run = Kind();
    if (EndsWaiting(run, line)) {
        tmrStatus->SetEnabled(false);
        Ui_->lblStatus->setVisible(true);
    }
    Append(Texts_.TakeMessage(line));
    SetStatus(Texts_.Status);
    const BarChange bar = BarAfter(line.Kind);
    if (bar == BarChange::Full && run.IsUpload) {
        ShowSoftwareSummary(modBinFileInfo::GetBinFileInfo(ImageFileName));
    }
    if (const auto caption = CaptionAfter(run, line)) {
        TitleBar_.SetCaption(*caption);
    }
    switch (bar) {
        case BarChange::None:
            break;
        case BarChange::PleaseWait:
            ShowInBar("Please wait...", 100);
            break;
        case BarChange::Full:
            ShowInBar(Ui_->PercentBar1->objectName(), 100);
            break;
        case BarChange::Faded:
            FadeBar();
            break;
    }
}

void frmMain::SerialFlash1_Timing(const RunTiming& timing) {
    Texts_.Timing = timing;
    ShowText(*Ui_->lblTiming, timing.Text);
    Ui_->lblTiming->setVisible(true);
    ShowText(*Ui_->lblRate, Rate_.Text());
}

void frmMain::tmrStatus_Timer() {
    Ui_->lblStatus->setVisible(Ui_->lblStatus->isHidden());
}

void frmMain::SetQuitCaption(const QString& caption) {
    Ui_->cmdQuit->setText(caption);
    Ui_->cmdQuit->setAccessibleDescription(QString(caption).remove('&'));
}

void frmMain::SetStatus(const std::string& text) {
    ShowText(*Ui_->lblStatus, text);
}

void frmMain::Append(std::span<const std::string> lines) {
    Ui_->txtDisplay->moveCursor(QTextCursor::End);
    for (const std::string& line : lines) {
        Ui_->txtDisplay->insertPlainText(QString::fromStdString(line + "\n"));
    }
    Ui_->txtDisplay->moveCursor(QTextCursor::End);
}

void frmMain::ShowWorkingColors() {
    Ui_->PercentBar1->SetBackColor(White);
    Ui_->PercentBar1->SetForeColor(Navy);
}

// In the window's own colour nothing of the bar is seen, from the next time that it is drawn.
void frmMain::FadeBar() {
    const QColor background = palette().color(QPalette::Window);
    Ui_->PercentBar1->SetBackColor(background);
    Ui_->PercentBar1->SetForeColor(background);
}

void frmMain::ShowInBar(const QString& caption, int value) {
    Ui_->PercentBar1->SetCaption(caption);
    Ui_->PercentBar1->SetValue(value);
}

void frmMain::ShowSoftwareSummary(const modBinFileInfo::BinFileInfo& information) {
    Summary_.Show(information, Ui_->chkDebug->isChecked());
}

RunKind frmMain::Kind() const {
    return {Title_, modBinFileInfo::FileNameOf(ImageFileName), TransferMode == TransferModes::Upload,
            Texts_.Verifying};
}

}  // namespace burnwick
