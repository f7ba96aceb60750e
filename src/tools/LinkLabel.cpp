#include "tools/LinkLabel.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>

#include "forms/AccessibleAs.h"

namespace burnwick {

namespace {

// To a screen reader a link, and not a label: it can be pressed.
class AccessibleLink final : public QAccessibleWidget {
public:
    explicit AccessibleLink(LinkLabel& link) : QAccessibleWidget(&link, QAccessible::Link), Link_(link) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.linked = true;
        return state;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (Link_.isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) {
            QAccessibleWidget::doAction(action);
        } else if (Link_.isEnabled()) {
            // The screen reader waits for its answer, and need not wait for a message box.
            QMetaObject::invokeMethod(&Link_, &LinkLabel::Clicked, Qt::QueuedConnection);
        }
    }

private:
    LinkLabel& Link_;
};

}  // namespace

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
    MakeAccessibleAs<LinkLabel, AccessibleLink>();
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
