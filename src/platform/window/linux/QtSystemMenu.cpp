#include <QWidget>
#include <QWindow>

#include "platform/window/SystemMenu.h"

namespace burnwick {

namespace {

// A window manager draws the menu of every window by itself; what stands in it follows the window's hints.
Qt::WindowType HintOf(SystemCommand command) {
    switch (command) {
        case SystemCommand::Maximize:
            return Qt::WindowMaximizeButtonHint;
        case SystemCommand::Minimize:
            return Qt::WindowMinimizeButtonHint;
        case SystemCommand::Close:
            return Qt::WindowCloseButtonHint;
        case SystemCommand::Restore:  // goes with Maximize
        case SystemCommand::Move:     // is the window manager's own
        case SystemCommand::Size:     // goes with the window's fixed size
            break;
    }
    return Qt::Widget;
}

class QtSystemMenu final : public SystemMenu {
public:
    explicit QtSystemMenu(WindowHandle window) : Window_(window) {}

    void Delete(SystemCommand command) override { Show(HintOf(command), false); }
    bool CloseIsGreyed() const override { return CloseGreyed_; }
    void SetCloseGreyed(bool greyed) override {
        CloseGreyed_ = greyed;
        Show(Qt::WindowCloseButtonHint, !greyed);
    }
    void DrawTitleBar(bool /*active*/) override {}  // the window manager does at once

private:
    void Show(Qt::WindowType hint, bool shown) const {
        QWidget* const widget = QWidget::find(Window_);
        QWindow* const window = widget == nullptr ? nullptr : widget->windowHandle();
        if (window == nullptr || hint == Qt::Widget) {
            return;
        }
        const Qt::WindowFlags all = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
                                    | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
        const Qt::WindowFlags now = window->flags();
        const Qt::WindowFlags known = (now & Qt::CustomizeWindowHint) != 0 ? now : now | all;
        window->setFlags(shown ? known | hint : known & ~hint);
    }

    WindowHandle Window_;
    bool CloseGreyed_ = false;
};

}  // namespace

std::unique_ptr<SystemMenu> SystemMenuOf(WindowHandle window) {
    return std::make_unique<QtSystemMenu>(window);
}

}  // namespace burnwick
