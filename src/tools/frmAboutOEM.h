#pragma once

#include <memory>

#include "forms/PlacedDialog.h"
#include "job/Product.h"

namespace burnwick {

namespace Ui {
class frmAboutOEM;
}

// Tells which program this is, where an equipment maker passes it on: no more than its version.
class frmAboutOEM final : public PlacedDialog {
    Q_OBJECT

public:
    explicit frmAboutOEM(const Product& product, QWidget* parent = nullptr);
    ~frmAboutOEM() override;

private:
    std::unique_ptr<Ui::frmAboutOEM> Ui_;
};

}  // namespace burnwick
