#include "app/PaintLimit.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace burnwick {

namespace {

constexpr int Frame = 16;  // milliseconds

}  // namespace

PaintLimit::PaintLimit(QWidget* window) : QObject(window) {
    Next_.setSingleShot(true);
    Next_.setTimerType(Qt::PreciseTimer);
    connect(&Next_, &QTimer::timeout, window, [window] {
        QCoreApplication::postEvent(window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
    });
    window->installEventFilter(this);
}

// The toolkit asks once for whatever has become dirty until it is painted: the request is kept, not dropped.
bool PaintLimit::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() != QEvent::UpdateRequest) {
        return false;
    }
    const auto since = SinceLast_.isValid() ? SinceLast_.elapsed() : Frame;
    if (since < Frame) {
        if (!Next_.isActive()) {
            Next_.start(static_cast<int>(Frame - since));
        }
        return true;
    }
    SinceLast_.start();
    return false;
}

}  // namespace burnwick
