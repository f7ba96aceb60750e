#include <QDesktopServices>
#include <QUrl>

#include "platform/OpenLink.h"

namespace burnwick {

bool OpenLink(const std::string& link) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(link), QUrl::StrictMode));
}

}  // namespace burnwick
