#include "tools/frmAbout.h"

#include <QIcon>
#include <utility>

#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "job/BoxTexts.h"
#include "ui_frmAbout.h"

namespace burnwick {

frmAbout::frmAbout(const Product& product, WebEmail::OpenLinkFunction openLink, QWidget* parent)
    : PlacedDialog(parent),
      WebSite_(product.WebSite),
      OpenLink_(std::move(openLink)),
      Ui_(std::make_unique<Ui::frmAbout>()) {
    Ui_->setupUi(this);
    NameControls(*this);
    ShowProgramIcon(*Ui_->lblIcon);
    ShowText(*Ui_->lblTitle, product.Title);
    ShowText(*Ui_->lblVersion, VersionText(product));
    ShowText(*Ui_->lblComments, product.Comments);
    ShowText(*Ui_->lblCopyright, product.LegalNotice);
    ShowText(*Ui_->lblWebSite, WebSite_);
    Ui_->cmdOK->setFocus();
    connect(Ui_->lblWebSite, &LinkLabel::Clicked, this, &frmAbout::lblWebSite_Click);
    connect(Ui_->cmdOK, &QPushButton::clicked, this, &frmAbout::accept);
}

frmAbout::~frmAbout() = default;

void frmAbout::lblWebSite_Click() {
    if (!WebEmail::Open(WebSite_, OpenLink_)) {
        MsgBox(this, QMessageBox::Warning, LinkNotOpenedBox(WebSite_));
    }
}

}  // namespace burnwick
