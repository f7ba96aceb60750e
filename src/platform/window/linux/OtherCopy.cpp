#include "platform/window/qt/OtherCopy.h"

#include <QFileInfo>

namespace burnwick {

std::string SessionName() {
    return {};
}

QString SocketNameOf(const std::filesystem::path& path) {
    return QFileInfo(path).filePath();
}

// Nobody else may enter the folder, and who comes forward is the window manager's matter.
bool LetComeForward(qintptr /*socket*/) {
    return true;
}

}  // namespace burnwick
