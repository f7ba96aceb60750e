#include "app/RecentMenu.h"

#include <QAction>

#include "job/RecentFiles.h"
#include "ui_frmMain.h"

namespace burnwick {

RecentMenu::RecentMenu(Ui::frmMain& ui, SettingStore& settings,
                       const std::function<void(const std::string& path)>& open)
    : Ui_(ui),
      Settings_(settings),
      Entries_{ui.mnuFileMRF_1, ui.mnuFileMRF_2, ui.mnuFileMRF_3, ui.mnuFileMRF_4} {
    for (QAction* const entry : Entries_) {
        QObject::connect(entry, &QAction::triggered, entry,
                         [entry, open] { open(PathOfCaption(entry->text().toStdString())); });
    }
}

void RecentMenu::Load() {
    const RecentFiles files = ReadRecentFiles(Settings_);
    bool any = false;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string& path = files.at(i);
        Entries_.at(i)->setText(QString::fromStdString(RecentCaption(static_cast<int>(i) + 1, path)));
        Entries_.at(i)->setVisible(!path.empty());
        any = any || !path.empty();
    }
    Ui_.mnuFileMRFSeparator->setVisible(any);
}

void RecentMenu::Add(const std::string& path) {
    AddRecentFile(path, Settings_);
    Load();
}

}  // namespace burnwick
