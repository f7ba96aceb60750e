#include "gui/Offers.h"

#include <QWindow>

namespace burnwick::test {

namespace {

bool Offers(const QWidget& window, Qt::WindowType hint) {
    return window.windowHandle()->flags().testFlag(hint);
}

}  // namespace

bool OffersMaximize(const QWidget& window) {
    return Offers(window, Qt::WindowMaximizeButtonHint);
}

bool OffersMinimize(const QWidget& window) {
    return Offers(window, Qt::WindowMinimizeButtonHint);
}

bool OffersClose(const QWidget& window) {
    return Offers(window, Qt::WindowCloseButtonHint);
}

}  // namespace burnwick::test
