#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace burnwick {

// Has a window painted no more often than a screen shows it, however often its contents change: blocks must
// not wait for pictures that nobody sees. What changed last is always painted. Ends with its window.
class PaintLimit final : public QObject {
public:
    explicit PaintLimit(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QElapsedTimer SinceLast_;
    QTimer Next_;
};

}  // namespace burnwick
