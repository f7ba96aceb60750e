#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>

#include "forms/PlacedDialog.h"
#include "platform/Setting.h"
#include "platform/ShellIntegration.h"

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
        ReadSetting Setting;
        WriteSetting Store;
        ShellIntegration& Shell;  // must outlive the dialog
        std::filesystem::path Program;
    };

    explicit frmOptions(Services services, QWidget* parent = nullptr);
    ~frmOptions() override;

private:
    void LoadSettings();
    void cmdOK_Click();
    void StoreFileType();
    void StoreShortcut();
    bool Is(const std::string& key, const std::string& value) const;
    void Store(const std::string& key, const std::string& value) const;

    Services Services_;
    std::unique_ptr<Ui::frmOptions> Ui_;
    std::array<QRadioButton*, 3> optLogOption_{};
};

}  // namespace burnwick
