#pragma once

#include <QString>
#include <QWidget>

namespace burnwick::test {

// Puts a picture of the widget, called NAME.png, among those of this build. False when it cannot be written.
bool TakePictureOf(QWidget& widget, const QString& name);

}  // namespace burnwick::test
