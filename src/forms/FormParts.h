#pragma once

class QRect;
class QWidget;

namespace burnwick {

// Gives the form and its controls their object names as accessible names: tests and screen readers know them
// by these.
void NameControls(QWidget& form);

// The screen on which a form opens, its parent's, without what panels cover.
QRect ScreenOf(const QWidget& form);

// Moves the form to the middle of that screen.
void CenterOnScreen(QWidget& form);

}  // namespace burnwick
