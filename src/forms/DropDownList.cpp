#include "forms/DropDownList.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace burnwick {

namespace {

bool DropsDown(const QKeyEvent& event) {
    const bool isArrow = event.key() == Qt::Key_Down || event.key() == Qt::Key_Up;
    return event.key() == Qt::Key_F4 || event.key() == Qt::Key_Space
           || (isArrow && event.modifiers().testFlag(Qt::AltModifier));
}

bool ActsOnRelease(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter
           || key == Qt::Key_Escape;
}

}  // namespace

void DropDownList::showPopup() {
    Q_EMIT DropDown();
    QComboBox::showPopup();
}

void DropDownList::keyPressEvent(QKeyEvent* event) {
    const bool dropsDown = DropsDown(*event);
    if (!dropsDown && ActsOnRelease(event->key())) {
        Pressed_ = event->key();
        event->accept();
    } else if (dropsDown || !Locked_) {
        QComboBox::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

// A key that went down elsewhere, in a message box or in the list, has done its work there.
void DropDownList::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat() || event->key() != Pressed_) {
        QComboBox::keyReleaseEvent(event);
        return;
    }
    Pressed_ = 0;
    event->accept();
    Q_EMIT KeyUp(event->key());
}

void DropDownList::focusOutEvent(QFocusEvent* event) {
    Pressed_ = 0;
    QComboBox::focusOutEvent(event);
}

void DropDownList::wheelEvent(QWheelEvent* event) {
    if (Locked_) {
        event->ignore();
    } else {
        QComboBox::wheelEvent(event);
    }
}

}  // namespace burnwick
