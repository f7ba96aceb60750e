#pragma once

#include <QMessageBox>

#include "run/BoxTexts.h"

namespace burnwick {

// Shows a message and waits for the answer. `more` stands below the text.
QMessageBox::StandardButton MsgBox(QWidget* parent, QMessageBox::Icon icon, const BoxText& box,
                                   QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                   const std::string& more = {});

}  // namespace burnwick
