#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace burnwick {

// The pointer is an hourglass while this lives.
class Hourglass {
public:
    Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace burnwick
