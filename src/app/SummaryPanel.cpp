#include "app/SummaryPanel.h"

#include <QClipboard>
#include <QGuiApplication>

#include "forms/FormParts.h"
#include "forms/Hourglass.h"
#include "forms/MsgBox.h"
#include "job/BoxTexts.h"
#include "job/CopyToFolder.h"
#include "platform/process/PlainText.h"
#include "tools/modBrowseFolder.h"
#include "ui_frmMain.h"

namespace burnwick {

namespace {

std::string CopyUnderHourglass(const std::filesystem::path& source, const std::filesystem::path& target,
                               Existing existing) {
    const Hourglass hourglass;
    return CopyWhole(source, target, existing);
}

}  // namespace

void SummaryPanel::Show(const modBinFileInfo::BinFileInfo& information, bool wholeChecksum) {
    Information_ = information;
    Summary_ = SummaryOf(information, wholeChecksum);
    ShowTexts();
    const bool named = information.Model != modBinFileInfo::NotAvailable;
    ShowTitle(named ? "Model: " + information.Model : "Summary:");
    EnableCommands(true);
}

void SummaryPanel::Clear() {
    Information_ = {};
    Summary_ = {};
    ShowTexts();
    ShowTitle("Summary:");
    EnableCommands(false);
}

void SummaryPanel::ShowTexts() const {
    ShowText(*Ui_.lblChecksum, Summary_.Checksum);
    ShowText(*Ui_.lblVersion, Summary_.Version);
    ShowText(*Ui_.lblLanguage, Summary_.Language);
    ShowText(*Ui_.lblDateStamp, Summary_.DateStamp);
}

// A long title must not widen the window, and its ampersands are no access keys.
void SummaryPanel::ShowTitle(const std::string& title) const {
    const QFontMetrics metrics = Window_.fontMetrics();
    const int room = Ui_.txtDisplay->minimumWidth() - metrics.horizontalAdvance("MM");
    QString shown = metrics.elidedText(QString::fromStdString(title), Qt::ElideRight, room);
    Ui_.fraSummary->setTitle(shown.replace("&", "&&"));
    Ui_.fraSummary->setAccessibleDescription(QString::fromStdString(title));
}

void SummaryPanel::EnableCommands(bool enabled) const {
    Ui_.mnuFileCopy->setEnabled(enabled);
    Ui_.mnuFileCopyToFolder->setEnabled(enabled);
}

void SummaryPanel::CopyLine() const {
    if (Summary_.Checksum.empty()) {
        return;
    }
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(QString::fromStdString(SoftwareLine(Information_, Summary_)));
}

void SummaryPanel::CopyToFolder() const {
    if (Summary_.Checksum.empty()) {
        return;
    }
    const std::string title = "Copy " + PlainText(Information_.FileName, ' ') + " to...";
    const std::string folder = modBrowseFolder::BrowseForFolder(&Window_, title);
    if (!folder.empty()) {
        CopyInto(folder);
    }
}

void SummaryPanel::CopyInto(const std::string& folder) const {
    const auto source = PathIn(Information_.FilePath, Information_.FileName);
    const auto target = PathIn(folder, Information_.FileName);
    const auto fail = [this](const std::string& why) {
        MsgBox(&Window_, QMessageBox::Warning, CopyErrorBox(), QMessageBox::Ok, why);
    };
    if (const std::string trouble = SourceTrouble(source); !trouble.empty()) {
        fail(trouble);
        return;
    }
    std::error_code error;
    const bool isThere = HasFile(folder, Information_.FileName, error);
    if (error) {
        fail("The folder cannot be read: " + error.message() + ".");
        return;
    }
    if (isThere
        && MsgBox(&Window_, QMessageBox::Warning,
                  ReplaceQuestion(Information_.FileName, SizeAndTimeOf(target), SizeAndTimeOf(source)),
                  QMessageBox::Yes | QMessageBox::No, {}, QMessageBox::No)
               != QMessageBox::Yes) {
        return;
    }
    const std::string trouble =
        CopyUnderHourglass(source, target, isThere ? Existing::Replace : Existing::Keep);
    if (!trouble.empty()) {
        fail(trouble);
    } else if (!HasFile(folder, Information_.FileName, error)) {
        fail("The folder does not list the copy.");
    }
}

}  // namespace burnwick
