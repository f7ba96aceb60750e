#include "platform/window/SystemMenu.h"

#include <optional>

#include "platform/process/windows/SystemHeaders.h"

#include <commctrl.h>

namespace burnwick {

namespace {

constexpr UINT Greyed = MF_GRAYED | MF_DISABLED;

// The Close item's number while it is greyed. Without an item that has SC_CLOSE the system greys the title
// bar's button as well; and Qt, which enables that one with each menu that it opens, does not find it.
constexpr UINT NoClose = static_cast<UINT>(-10);

UINT NumberOf(SystemCommand command) {
    switch (command) {
        case SystemCommand::Restore:
            return SC_RESTORE;
        case SystemCommand::Move:
            return SC_MOVE;
        case SystemCommand::Size:
            return SC_SIZE;
        case SystemCommand::Minimize:
            return SC_MINIMIZE;
        case SystemCommand::Maximize:
            return SC_MAXIMIZE;
        case SystemCommand::Close:
            break;
    }
    return SC_CLOSE;
}

class WindowMenu final : public SystemMenu {
public:
    explicit WindowMenu(HWND window) : Window_(window) {
        SetWindowSubclass(Window_, Hear, Id(), reinterpret_cast<DWORD_PTR>(this));
    }
    WindowMenu(const WindowMenu&) = delete;
    WindowMenu& operator=(const WindowMenu&) = delete;
    ~WindowMenu() override { RemoveWindowSubclass(Window_, Hear, Id()); }

    void Delete(SystemCommand command) override {
        DeleteMenu(Menu(), NumberOf(command), MF_BYCOMMAND);
        if (command == SystemCommand::Maximize) {
            TakeStyle(WS_MAXIMIZEBOX);
        } else if (command == SystemCommand::Minimize) {
            TakeStyle(WS_MINIMIZEBOX);
        }
    }

    bool CloseIsGreyed() const override { return (State(NoClose).value_or(0) & Greyed) == Greyed; }

    void SetCloseGreyed(bool greyed) override {
        const UINT before = greyed ? SC_CLOSE : NoClose;
        const UINT now = greyed ? NoClose : SC_CLOSE;
        const auto state = State(before);
        if (!state || !Swap(before, now)) {
            return;
        }
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE;
        item.fState = greyed ? *state | Greyed : *state & ~Greyed;
        if (SetMenuItemInfoW(Menu(), now, FALSE, &item) == FALSE) {
            Swap(now, before);
        }
    }

    void DrawTitleBar(bool active) override {
        SendMessageW(Window_, WM_NCACTIVATE, active ? TRUE : FALSE, 0);
    }

private:
    HMENU Menu() const { return GetSystemMenu(Window_, FALSE); }

    // Of the item with this number; nothing when there is none.
    std::optional<UINT> State(UINT number) const {
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE;
        return GetMenuItemInfoW(Menu(), number, FALSE, &item) != FALSE ? std::optional(item.fState)
                                                                       : std::nullopt;
    }

    bool Swap(UINT from, UINT to) const {
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID;
        item.wID = to;
        return SetMenuItemInfoW(Menu(), from, FALSE, &item) != FALSE;
    }

    // The title bar's button goes with its style.
    void TakeStyle(LONG_PTR style) const {
        SetWindowLongPtrW(Window_, GWL_STYLE, GetWindowLongPtrW(Window_, GWL_STYLE) & ~style);
        SetWindowPos(Window_, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    // Of the commands that the menu does not have any more, Restore is asked for by the taskbar's click.
    bool CanBeGiven(WPARAM command) const {
        switch (command) {
            case SC_CLOSE:
                return !CloseIsGreyed();
            case SC_SIZE:
            case SC_MOVE:
            case SC_MINIMIZE:
            case SC_MAXIMIZE:
                return State(static_cast<UINT>(command)).has_value();
            default:
                return true;
        }
    }

    UINT_PTR Id() const { return reinterpret_cast<UINT_PTR>(this); }

    // Commands come without the menu, too: from keys, the taskbar and double clicks on the title bar.
    static LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                 DWORD_PTR menu) {
        constexpr WPARAM withoutDetails = 0xFFF0;
        const WPARAM command = message == WM_SYSCOMMAND ? wParam & withoutDetails : 0;
        if (!reinterpret_cast<const WindowMenu*>(menu)->CanBeGiven(command)) {
            return 0;
        }
        // The system may refuse a command that its menu does not have; the taskbar's click is one.
        if (command == SC_RESTORE && IsIconic(window) != FALSE) {
            ShowWindow(window, SW_RESTORE);
            return 0;
        }
        return DefSubclassProc(window, message, wParam, lParam);
    }

    HWND Window_;
};

}  // namespace

std::unique_ptr<SystemMenu> SystemMenuOf(WindowHandle window) {
    return std::make_unique<WindowMenu>(reinterpret_cast<HWND>(window));
}

}  // namespace burnwick
