#include "forms/TextDrag.h"

#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace burnwick {

namespace {

// A press begins a new selection, also inside the one that is there.
template <typename TextBox>
class DragFilter final : public QObject {
public:
    explicit DragFilter(TextBox& box) : QObject(&box), Box_(box) { box.viewport()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto* const press = static_cast<QMouseEvent*>(event);
            if (press->button() == Qt::LeftButton && press->modifiers() != Qt::ShiftModifier) {
                QTextCursor cursor = Box_.textCursor();
                cursor.clearSelection();
                Box_.setTextCursor(cursor);
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    TextBox& Box_;
};

}  // namespace

void ForbidTextDrag(QPlainTextEdit& box) {
    new DragFilter(box);
}

void ForbidTextDrag(QTextEdit& box) {
    new DragFilter(box);
}

}  // namespace burnwick
