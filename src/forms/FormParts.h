#pragma once

#include <QString>
#include <string>

class QLabel;
class QRect;
class QWidget;

namespace burnwick {

// Gives the form and its controls their object names as accessible names: tests and screen readers know them
// by these. What a control shows is its accessible description, unless its form file gives it one; a form's
// is its caption.
void NameControls(QWidget& form);

// The shortcut of an option holds it down for a moment before it is clicked. Whoever takes OK for an answer
// sooner has clicked it all the same.
void FinishClicks(const QWidget& form);

// Shows a text, to screen readers too.
void ShowText(QLabel& label, const std::string& text);

// The program's icon, in the size for a box that tells of the program.
void ShowProgramIcon(QLabel& label);

// The text of a tool tip that shows all of it as it is: a path, or what an adapter calls itself, may hold
// anything, mark-up too.
QString PlainToolTip(const QString& text);

// The screen on which a form opens, its parent's, without what panels cover.
QRect ScreenOf(const QWidget& form);

// Moves the form to the middle of that screen.
void CenterOnScreen(QWidget& form);

// Closes every window of this program that has the title.
void CloseWindowByTitle(const std::string& title);

}  // namespace burnwick
