#include "forms/PlacedDialog.h"

#include <QShowEvent>

#include "forms/FormParts.h"

namespace burnwick {

// Once it has its size. One that only comes back from an icon stays where it is.
void PlacedDialog::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        Place();
    }
    QDialog::showEvent(event);
}

void PlacedDialog::Place() {
    CenterOnScreen(*this);
}

}  // namespace burnwick
