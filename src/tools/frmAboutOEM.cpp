#include "tools/frmAboutOEM.h"

#include "forms/FormParts.h"
#include "ui_frmAboutOEM.h"

namespace burnwick {

frmAboutOEM::frmAboutOEM(const Product& product, QWidget* parent)
    : PlacedDialog(parent), Ui_(std::make_unique<Ui::frmAboutOEM>()) {
    Ui_->setupUi(this);
    NameControls(*this);
    ShowProgramIcon(*Ui_->lblIcon);
    ShowText(*Ui_->lblTitle, product.Title);
    ShowText(*Ui_->lblVersion, VersionText(product));
    connect(Ui_->cmdOK, &QPushButton::clicked, this, &frmAboutOEM::accept);
}

frmAboutOEM::~frmAboutOEM() = default;

}  // namespace burnwick
