#include "app/FileDialog.h"

#include <QFileDialog>

namespace burnwick {

namespace {

std::string Ask(QFileDialog& dialog) {
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return chosen ? dialog.selectedFiles().constFirst().toStdString() : std::string();
}

}  // namespace

std::string AskForFileToOpen(QWidget* parent, const std::string& initDir) {
    QFileDialog dialog(parent, "Open Burnwick File", QString::fromStdString(initDir),
                       "Burnwick File (*.bin)");
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::string AskForFileToSave(QWidget* parent, const std::string& initDir) {
    QFileDialog dialog(parent, "Save As Burnwick File", QString::fromStdString(initDir),
                       "Burnwick File (*.bin)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("bin");
    return Ask(dialog);
}

}  // namespace burnwick
