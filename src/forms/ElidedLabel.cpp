#include "forms/ElidedLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "forms/FormParts.h"

namespace burnwick {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::sizeHint() const {
    return {0, fontMetrics().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        setToolTip(Shown() == text() ? QString() : PlainToolTip(text()));
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine,
                          palette(), isEnabled(), Shown(), foregroundRole());
}

QString ElidedLabel::Shown() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

}  // namespace burnwick
