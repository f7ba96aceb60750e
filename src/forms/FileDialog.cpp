#include "forms/FileDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "forms/MsgBox.h"

namespace burnwick {

namespace {

std::string Ask(QFileDialog& dialog) {
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return chosen ? QDir::toNativeSeparators(dialog.selectedFiles().constFirst()).toStdString()
                  : std::string();
}

bool MayReplace(QWidget* parent, const std::string& path) {
    const BoxText question{"Save As Burnwick File", path + " already exists.\nDo you want to replace it?"};
    return MsgBox(parent, QMessageBox::Warning, question, QMessageBox::Yes | QMessageBox::No, {},
                  QMessageBox::No)
           == QMessageBox::Yes;
}

}  // namespace

std::string AskForFileToOpen(QWidget* parent, const std::string& title, const std::string& filter,
                             const std::string& initDir) {
    QFileDialog dialog(parent, QString::fromStdString(title), QString::fromStdString(initDir),
                       QString::fromStdString(filter));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::string AskForFileToSave(QWidget* parent, const std::string& initDir) {
    QFileDialog dialog(parent, "Save As Burnwick File", QString::fromStdString(initDir),
                       "Burnwick File (*.bin)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    std::string typed = Ask(dialog);
    if (typed.empty() || !QFileInfo(QString::fromStdString(typed)).suffix().isEmpty()) {
        return typed;
    }
    // The dialog has asked about the name that was typed, and not about this one.
    const std::string named = typed + ".bin";
    return !QFileInfo::exists(QString::fromStdString(named)) || MayReplace(parent, named) ? named
                                                                                          : std::string();
}

}  // namespace burnwick
