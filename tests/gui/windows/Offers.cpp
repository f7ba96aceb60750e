#include "gui/Offers.h"

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {

namespace {

bool Offers(const QWidget& window, UINT command) {
    const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(window.winId()), FALSE);
    // The state of no item is -1, with all bits set.
    return (GetMenuState(menu, command, MF_BYCOMMAND) & MF_GRAYED) == 0;
}

}  // namespace

bool OffersMaximize(const QWidget& window) {
    return Offers(window, SC_MAXIMIZE);
}

bool OffersMinimize(const QWidget& window) {
    return Offers(window, SC_MINIMIZE);
}

bool OffersClose(const QWidget& window) {
    return Offers(window, SC_CLOSE);
}

}  // namespace burnwick::test
