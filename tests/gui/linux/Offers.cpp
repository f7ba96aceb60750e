#include "gui/Offers.h"

#include <QWindow>

namespace burnwick::test {

bool OffersClose(const QWidget& window) {
    return window.windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint);
}

}  // namespace burnwick::test
