#include "platform/window/Attention.h"

#include <QApplication>
#include <QWidget>

namespace burnwick {

// The toolkit alone would keep its request back until it has something else to send.
void AskForAttention(WindowHandle window) {
    if (QWidget* const widget = QWidget::find(window)) {
        QApplication::alert(widget);
        QApplication::sync();
    }
}

}  // namespace burnwick
