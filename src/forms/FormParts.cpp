#include "forms/FormParts.h"

#include <QScreen>
#include <QWidget>

namespace burnwick {

void NameControls(QWidget& form) {
    form.setAccessibleName(form.objectName());
    for (QWidget* const control : form.findChildren<QWidget*>()) {
        // What Qt made for itself stays as it is.
        if (!control->objectName().isEmpty() && !control->objectName().startsWith("qt_")) {
            control->setAccessibleName(control->objectName());
        }
    }
}

QRect ScreenOf(const QWidget& form) {
    const QWidget& placed = form.parentWidget() == nullptr ? form : *form.parentWidget();
    return placed.screen()->availableGeometry();
}

void CenterOnScreen(QWidget& form) {
    QRect place = form.frameGeometry();
    place.moveCenter(ScreenOf(form).center());
    form.move(place.topLeft());
}

}  // namespace burnwick
