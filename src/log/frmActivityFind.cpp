#include "log/frmActivityFind.h"

#include <algorithm>

#include "forms/FormParts.h"
#include "ui_frmActivityFind.h"

namespace burnwick {

namespace {

// In the middle of the other window, as far as the screen has room there.
void PlaceOver(const QWidget& under, QWidget& form) {
    const QRect screen = ScreenOf(form);
    QRect place = form.frameGeometry();
    place.moveCenter(under.frameGeometry().center());
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    form.move(place.topLeft());
}

}  // namespace

frmActivityFind::frmActivityFind(LogQuery& query, QWidget* parent)
    : PlacedDialog(parent), Query_(query), Ui_(std::make_unique<Ui::frmActivityFind>()) {
    Ui_->setupUi(this);
    NameControls(*this);
    connect(Ui_->txtFind, &QLineEdit::textChanged, this, &frmActivityFind::txtFind_Change);
    connect(Ui_->cmdFind, &QPushButton::clicked, this, &frmActivityFind::cmdFind_Click);
    connect(Ui_->cmdCancel, &QPushButton::clicked, this, &frmActivityFind::cmdCancel_Click);
    Ui_->chkMatch->setChecked(Query_.MatchCase);
    Ui_->txtFind->setText(Query_.Text);
    Ui_->txtFind->selectAll();
    txtFind_Change();
}

frmActivityFind::~frmActivityFind() = default;

void frmActivityFind::Place() {
    PlacedDialog::Place();
    if (parentWidget() != nullptr) {
        PlaceOver(*parentWidget(), *this);
    }
}

void frmActivityFind::reject() {
    cmdCancel_Click();
}

void frmActivityFind::txtFind_Change() {
    Ui_->cmdFind->setEnabled(!Ui_->txtFind->text().isEmpty());
}

void frmActivityFind::cmdFind_Click() {
    Query_ = {Ui_->txtFind->text(), Ui_->chkMatch->isChecked()};
    accept();
}

void frmActivityFind::cmdCancel_Click() {
    Query_ = {{}, Ui_->chkMatch->isChecked()};
    QDialog::reject();
}

}  // namespace burnwick
