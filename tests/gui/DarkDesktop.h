#pragma once

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace burnwick::test {

// A desktop that is dark for as long. A style that draws as the system does knows no such colours: in the
// dark the toolkit puts another in its place.
class DarkDesktop {
public:
    DarkDesktop() {
        if (Style_ == "windowsvista") {
            QApplication::setStyle("fusion");
        }
        QApplication::setPalette(Colors());
        QCoreApplication::processEvents();
    }
    DarkDesktop(const DarkDesktop&) = delete;
    DarkDesktop& operator=(const DarkDesktop&) = delete;
    ~DarkDesktop() {
        QApplication::setStyle(Style_);
        QApplication::setPalette(QPalette());
        QCoreApplication::processEvents();
    }

private:
    static QPalette Colors() {
        QPalette palette;
        const QColor ground(0x2b, 0x2b, 0x2b);
        const QColor ink(0xe6, 0xe6, 0xe6);
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
        palette.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3a));
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            palette.setColor(role, ink);
            palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
        }
        palette.setColor(QPalette::Highlight, QColor(0x2a, 0x82, 0xda));
        palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xff));
        return palette;
    }

    QString Style_ = QApplication::style()->name();
};

}  // namespace burnwick::test
