#include "settings/frmChipSelect.h"

#include <QRadioButton>
#include <algorithm>

#include "forms/FormParts.h"
#include "ui_frmChipSelect.h"

namespace burnwick {

frmChipSelect::frmChipSelect(SettingValues& settings, QWidget* parent)
    : PlacedDialog(parent), Settings_(settings), Ui_(std::make_unique<Ui::frmChipSelect>()) {
    Ui_->setupUi(this);
    optChipSize_ = {Ui_->optChipSize_0, Ui_->optChipSize_1, Ui_->optChipSize_2, Ui_->optChipSize_3};
    for (std::size_t index = 0; index < optChipSize_.size(); ++index) {
        optChipSize_[index]->setText(QString::fromStdString(ChipCaption(index)));
    }
    NameControls(*this);
    QRadioButton* const selected = optChipSize_[ChipIndexOf(settings.Stored(Setting::UploadChipSize))];
    selected->setChecked(true);
    selected->setFocus();
    connect(Ui_->cmdOK, &QPushButton::clicked, this, &frmChipSelect::cmdOK_Click);
    connect(Ui_->cmdCancel, &QPushButton::clicked, this, &frmChipSelect::reject);
}

frmChipSelect::~frmChipSelect() = default;

int frmChipSelect::UploadBlocks() const {
    return result() == Accepted ? ChipSizes[SelectedIndex()].Blocks : 0;
}

void frmChipSelect::cmdOK_Click() {
    FinishClicks(*this);
    Settings_.Store(Setting::UploadChipSize, std::to_string(SelectedIndex()));
    accept();
}

std::size_t frmChipSelect::SelectedIndex() const {
    const auto selected = std::find_if(optChipSize_.begin(), optChipSize_.end(),
                                       [](const QRadioButton* option) { return option->isChecked(); });
    return static_cast<std::size_t>(selected - optChipSize_.begin());
}

}  // namespace burnwick
