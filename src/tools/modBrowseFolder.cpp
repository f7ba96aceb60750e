#include "tools/modBrowseFolder.h"

#include <QDir>
#include <QFileDialog>

namespace burnwick::modBrowseFolder {

std::string BrowseForFolder(QWidget* owner, const std::string& title) {
    QFileDialog dialog(owner, QString::fromStdString(title));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return chosen ? QDir::toNativeSeparators(dialog.selectedFiles().constFirst()).toStdString()
                  : std::string();
}

}  // namespace burnwick::modBrowseFolder
