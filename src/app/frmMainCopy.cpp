// The copy commands: what the summary shows as a line of text, and its image into another folder.
#include <QClipboard>
#include <QGuiApplication>

#include "app/frmMain.h"
#include "forms/Hourglass.h"
#include "forms/MsgBox.h"
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

void frmMain::mnuFileCopy_Click() {
    if (Summary_.Checksum.empty()) {
        return;
    }
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(QString::fromStdString(SoftwareLine(BinFileInfo, Summary_)));
}

void frmMain::mnuFileCopyToFolder_Click() {
    // A run that begins must not wait for a folder to be chosen.
    if (Summary_.Checksum.empty() || Running_) {
        return;
    }
    const std::string title = "Copy " + PlainText(BinFileInfo.FileName, ' ') + " to...";
    const std::string folder = modBrowseFolder::BrowseForFolder(this, title);
    if (!folder.empty()) {
        CopyInto(folder);
    }
}

void frmMain::CopyInto(const std::string& folder) {
    const auto source = PathIn(BinFileInfo.FilePath, BinFileInfo.FileName);
    const auto target = PathIn(folder, BinFileInfo.FileName);
    const auto fail = [this](const std::string& why) {
        MsgBox(this, QMessageBox::Warning, CopyErrorBox(), QMessageBox::Ok, why);
    };
    if (const std::string trouble = SourceTrouble(source); !trouble.empty()) {
        fail(trouble);
        return;
    }
    std::error_code error;
    const bool isThere = HasFile(folder, BinFileInfo.FileName, error);
    if (error) {
        fail("The folder cannot be read: " + error.message() + ".");
        return;
    }
    if (isThere
        && MsgBox(this, QMessageBox::Warning,
                  ReplaceQuestion(BinFileInfo.FileName, SizeAndTimeOf(target), SizeAndTimeOf(source)),
                  QMessageBox::Yes | QMessageBox::No, {}, QMessageBox::No)
               != QMessageBox::Yes) {
        return;
    }
    const std::string trouble =
        CopyUnderHourglass(source, target, isThere ? Existing::Replace : Existing::Keep);
    if (!trouble.empty()) {
        fail(trouble);
    } else if (!HasFile(folder, BinFileInfo.FileName, error)) {
        fail("The folder does not list the copy.");
    }
}

void frmMain::EnableCopyCommands(bool enabled) {
    Ui_->mnuFileCopy->setEnabled(enabled);
    Ui_->mnuFileCopyToFolder->setEnabled(enabled);
}

}  // namespace burnwick
