#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>

#include "forms/PlacedDialog.h"
#include "platform/desktop/ShellIntegration.h"
#include "settings/Settings.h"

class QRadioButton;

namespace burnwick {

namespace Ui {
class frmOptions;
}

// Asks what is offered after a download, what the log holds, and how the desktop knows the program. Only OK
// changes anything.
class frmOptions final : public PlacedDialog {
    Q_OBJECT

public:
    struct Services {
        SettingStore& Settings;  // they must outlive the dialog
        ShellIntegration& Shell;
        std::filesystem::path Program;
    };

    explicit frmOptions(Services services, QWidget* parent = nullptr);
    ~frmOptions() override;

private:
    void LoadSettings();
    void cmdOK_Click();
    void ChangeDesktop() const;
    bool Is(const SettingEntry& entry, const std::string& value) const;

    Services Services_;
    std::unique_ptr<Ui::frmOptions> Ui_;
    std::array<QRadioButton*, 3> optLogOption_{};
};

}  // namespace burnwick
