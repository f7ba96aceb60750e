#pragma once

#include <QPalette>

namespace burnwick::test {

// A dark desktop's colours.
inline QPalette DarkPalette() {
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

}  // namespace burnwick::test
