#include "forms/TextDrag.h"

#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
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
            if (press->button() == Qt::LeftButton && press->modifiers() != Qt::ShiftModifier
                && Box_.textCursor().hasSelection()) {
                Unselect();
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // What was selected need not be in view, and is not brought there: the click is for what is.
    void Unselect() {
        const int across = Box_.horizontalScrollBar()->value();
        const int down = Box_.verticalScrollBar()->value();
        QTextCursor cursor = Box_.textCursor();
        cursor.clearSelection();
        Box_.setTextCursor(cursor);
        Box_.horizontalScrollBar()->setValue(across);
        Box_.verticalScrollBar()->setValue(down);
    }

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
