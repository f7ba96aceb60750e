#pragma once

#include <QWidget>

namespace burnwick::test {

// What the user may do to the window by its title bar or its system menu.
bool OffersMaximize(const QWidget& window);
bool OffersMinimize(const QWidget& window);
bool OffersClose(const QWidget& window);

}  // namespace burnwick::test
