#pragma once

#include <QMessageBox>

#include "platform/window/BoxText.h"

namespace burnwick {

// Shows a message and waits for the answer. `more` stands below the text. Enter gives `byDefault`, or without
// one the box's own choice.
QMessageBox::StandardButton MsgBox(QWidget* parent, QMessageBox::Icon icon, const BoxText& box,
                                   QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                   const std::string& more = {},
                                   QMessageBox::StandardButton byDefault = QMessageBox::NoButton);

}  // namespace burnwick
