#pragma once

#include <QComboBox>

namespace burnwick {

// A list to drop down, which can be locked: then keys and the wheel change nothing, and all that is left is
// to drop it down.
class DropDownList final : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    bool Locked() const { return Locked_; }
    void SetLocked(bool locked) { Locked_ = locked; }

    void showPopup() override;

Q_SIGNALS:
    // The list is about to drop down: entries may still be added.
    void DropDown();
    // Up, Down, Enter or Esc, pressed and let go while the list is not dropped down. The keys do nothing
    // else.
    void KeyUp(int key);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool Locked_ = false;
    int Pressed_ = 0;  // the key that is held down
};

}  // namespace burnwick
