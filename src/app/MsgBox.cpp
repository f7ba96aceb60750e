#include "app/MsgBox.h"

namespace burnwick {

QMessageBox::StandardButton MsgBox(QWidget* parent, QMessageBox::Icon icon, const BoxText& box,
                                   QMessageBox::StandardButtons buttons, const std::string& more) {
    QMessageBox message(icon, QString::fromStdString(box.Caption), QString::fromStdString(box.Text), buttons,
                        parent);
    // A path may hold anything, mark-up too.
    message.setTextFormat(Qt::PlainText);
    message.setInformativeText(QString::fromStdString(more));
    return static_cast<QMessageBox::StandardButton>(message.exec());
}

}  // namespace burnwick
