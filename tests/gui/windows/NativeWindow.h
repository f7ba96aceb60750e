#pragma once

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWidget>

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick::test {

// In the detail of a key's message: it is pressed with Alt.
inline constexpr LPARAM WithAlt = 1 << 29;

// A window of the system, and a count of what it was told.
class NativeWindow : public QWidget, private QAbstractNativeEventFilter {
public:
    NativeWindow() {
        QCoreApplication::instance()->installNativeEventFilter(this);
        show();
        QCoreApplication::processEvents();
    }

    HWND Handle() const { return reinterpret_cast<HWND>(internalWinId()); }
    void Post(UINT message, WPARAM wParam, LPARAM lParam = 0) const {
        PostMessageW(Handle(), message, wParam, lParam);
    }

    int Entered = 0;  // loops of the system
    int Left = 0;
    int Activations = 0;  // of the title bar: drawn as the active window's
    int Deactivations = 0;
    int Closings = 0;
    int Marks = 0;  // that were posted
    static constexpr UINT Mark = WM_APP + 1;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
        const MSG& sent = *static_cast<const MSG*>(message);
        if (sent.hwnd != Handle() || type != "windows_generic_MSG") {
            return false;
        }
        switch (sent.message) {
            case WM_ENTERSIZEMOVE:
            case WM_ENTERMENULOOP:
                ++Entered;
                break;
            case WM_EXITSIZEMOVE:
            case WM_EXITMENULOOP:
                ++Left;
                break;
            case WM_NCACTIVATE:
                ++(sent.wParam != 0 ? Activations : Deactivations);
                break;
            case Mark:
                ++Marks;
                break;
            case WM_CLOSE:
                ++Closings;
                break;
            default:
                break;
        }
        return false;
    }
};

}  // namespace burnwick::test
