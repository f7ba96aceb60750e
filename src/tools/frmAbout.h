#pragma once

#include <memory>
#include <string>

#include "forms/PlacedDialog.h"
#include "job/Product.h"
#include "tools/WebEmail.h"

namespace burnwick {

namespace Ui {
class frmAbout;
}

// Tells which program this is, and leads to its web site.
class frmAbout final : public PlacedDialog {
    Q_OBJECT

public:
    frmAbout(const Product& product, WebEmail::OpenLinkFunction openLink, QWidget* parent = nullptr);
    ~frmAbout() override;

private:
    void lblWebSite_Click();

    std::string WebSite_;
    WebEmail::OpenLinkFunction OpenLink_;
    std::unique_ptr<Ui::frmAbout> Ui_;
};

}  // namespace burnwick
