#pragma once

#include <QDialog>

namespace burnwick {

// A dialog that goes to its place each time it is shown.
class PlacedDialog : public QDialog {
    Q_OBJECT

public:
    using QDialog::QDialog;

protected:
    void showEvent(QShowEvent* event) override;

    // The middle of the screen, unless a dialog knows a better one.
    virtual void Place();
};

}  // namespace burnwick
