#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "forms/PlacedDialog.h"
#include "settings/ChipSize.h"
#include "settings/Settings.h"

class QRadioButton;

namespace burnwick {

namespace Ui {
class frmChipSelect;
}

// Asks for the size of the unit's flash chip before an upload. The size chosen last is selected.
class frmChipSelect final : public PlacedDialog {
    Q_OBJECT

public:
    explicit frmChipSelect(SettingValues& settings, QWidget* parent = nullptr);
    ~frmChipSelect() override;

    // How many blocks to read, once OK is chosen; 0 without that.
    int UploadBlocks() const;

private:
    void cmdOK_Click();
    std::size_t SelectedIndex() const;

    SettingValues& Settings_;
    std::unique_ptr<Ui::frmChipSelect> Ui_;
    std::array<QRadioButton*, ChipSizes.size()> optChipSize_{};
};

}  // namespace burnwick
