#include "gui/Picture.h"

#include <QDir>
#include <QPixmap>

namespace burnwick::test {

bool TakePictureOf(QWidget& widget, const QString& name) {
    return QDir().mkpath(PICTURES) && widget.grab().save(PICTURES "/" + name + ".png");
}

}  // namespace burnwick::test
