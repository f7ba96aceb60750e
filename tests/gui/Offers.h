#pragma once

#include <QWidget>

namespace burnwick::test {

// Whether the user may close the window, be it by its title bar or its system menu.
bool OffersClose(const QWidget& window);

}  // namespace burnwick::test
