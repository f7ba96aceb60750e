#include "gui/Offers.h"

#include "platform/windows/SystemHeaders.h"

namespace burnwick::test {

bool OffersClose(const QWidget& window) {
    // The state of no item is -1, with all bits set.
    const UINT state =
        GetMenuState(GetSystemMenu(reinterpret_cast<HWND>(window.winId()), FALSE), SC_CLOSE, MF_BYCOMMAND);
    return (state & MF_GRAYED) == 0;
}

}  // namespace burnwick::test
