#pragma once

#include <array>
#include <functional>
#include <string>

#include "settings/Settings.h"

class QAction;

namespace burnwick {

namespace Ui {
class frmMain;
}

// The entries of the File menu for the image files used last.
class RecentMenu {
public:
    // `open` is called with the path of an entry that was chosen. Menu and settings must outlive the object.
    RecentMenu(Ui::frmMain& ui, SettingStore& settings,
               const std::function<void(const std::string& path)>& open);

    void Load();
    // Makes a path the most recent one.
    void Add(const std::string& path);

private:
    Ui::frmMain& Ui_;
    SettingStore& Settings_;
    std::array<QAction*, 4> Entries_;
};

}  // namespace burnwick
