#include "forms/FormParts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QScreen>
#include <QTextDocument>
#include <QWidget>

namespace burnwick {

namespace {

QString Shown(const QWidget& control) {
    const QVariant text = control.property("text");
    return (text.isValid() ? text : control.property("title")).toString().remove('&');
}

}  // namespace

void NameControls(QWidget& form) {
    form.setAccessibleName(form.objectName());
    form.setAccessibleDescription(form.windowTitle());
    QObject::connect(&form, &QWidget::windowTitleChanged, &form, &QWidget::setAccessibleDescription);
    for (QWidget* const control : form.findChildren<QWidget*>()) {
        // What Qt made for itself stays as it is.
        if (!control->objectName().isEmpty() && !control->objectName().startsWith("qt_")) {
            control->setAccessibleName(control->objectName());
            if (control->accessibleDescription().isEmpty()) {
                control->setAccessibleDescription(Shown(*control));
            }
        }
    }
}

void FinishClicks(const QWidget& form) {
    for (QAbstractButton* const option : form.findChildren<QAbstractButton*>()) {
        if (option->isCheckable() && option->isDown()) {
            option->click();
        }
    }
}

void ShowText(QLabel& label, const std::string& text) {
    label.setText(QString::fromStdString(text));
    label.setAccessibleDescription(label.text());
}

void ShowProgramIcon(QLabel& label) {
    constexpr int size = 64;
    label.setPixmap(QApplication::windowIcon().pixmap(QSize(size, size), label.devicePixelRatio()));
}

QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QRect ScreenOf(const QWidget& form) {
    const QWidget& placed = form.parentWidget() == nullptr ? form : *form.parentWidget();
    return placed.screen()->availableGeometry();
}

void CenterOnScreen(QWidget& form) {
    QRect place = form.frameGeometry();
    place.moveCenter(ScreenOf(form).center());
    form.move(place.topLeft());
}

void CloseWindowByTitle(const std::string& title) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->windowTitle().toStdString() == title) {
            window->close();
        }
    }
}

}  // namespace burnwick
