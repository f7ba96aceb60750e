#pragma once

#include <QLabel>

namespace burnwick {

// A text to click on. It looks like a link while the pointer is over it, or the focus on it. To a screen
// reader it is one, with the action to press it.
class LinkLabel final : public QLabel {
    Q_OBJECT

public:
    explicit LinkLabel(QWidget* parent = nullptr);

Q_SIGNALS:
    void Clicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ShowLook();

    bool Pressed_ = false;
};

}  // namespace burnwick
