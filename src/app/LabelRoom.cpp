#include "app/LabelRoom.h"

#include <QLabel>

namespace burnwick {

LabelRoom::LabelRoom(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize LabelRoom::sizeHint() const {
    return {0, fontMetrics().height()};
}

void LabelRoom::resizeEvent(QResizeEvent* /*event*/) {
    for (QLabel* const label : findChildren<QLabel*>()) {
        label->setGeometry(rect());
    }
}

}  // namespace burnwick
