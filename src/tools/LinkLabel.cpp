#include "tools/LinkLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace burnwick {

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void LinkLabel::enterEvent(QEnterEvent* event) {
    QLabel::enterEvent(event);
    ShowLook();
}

void LinkLabel::leaveEvent(QEvent* event) {
    QLabel::leaveEvent(event);
    ShowLook();
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    ShowLook();
}

void LinkLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    ShowLook();
}

void LinkLabel::ShowLook() {
    const bool isLink = underMouse() || hasFocus();
    setForegroundRole(isLink ? QPalette::Link : QPalette::NoRole);
    QFont look = font();
    look.setUnderline(isLink);
    setFont(look);
}

void LinkLabel::mousePressEvent(QMouseEvent* event) {
    Pressed_ = event->button() == Qt::LeftButton;
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = Pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
    Pressed_ = false;
    if (isClick) {
        Q_EMIT Clicked();
    }
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        if (!event->isAutoRepeat()) {
            Q_EMIT Clicked();
        }
        return;
    }
    QLabel::keyPressEvent(event);
}

}  // namespace burnwick
