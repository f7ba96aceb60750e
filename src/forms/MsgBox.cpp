#include "forms/MsgBox.h"

#include <QLabel>

namespace burnwick {

QMessageBox::StandardButton MsgBox(QWidget* parent, QMessageBox::Icon icon, const BoxText& box,
                                   QMessageBox::StandardButtons buttons, const std::string& more,
                                   QMessageBox::StandardButton byDefault) {
    QMessageBox message(icon, QString::fromStdString(box.Caption), QString::fromStdString(box.Text), buttons,
                        parent);
    message.setInformativeText(QString::fromStdString(more));
    message.setDefaultButton(byDefault);
    // A path may hold anything, mark-up too.
    for (QLabel* const label : message.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    return static_cast<QMessageBox::StandardButton>(message.exec());
}

}  // namespace burnwick
