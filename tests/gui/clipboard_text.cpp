#include <QClipboard>
#include <QGuiApplication>
#include <iostream>

// Prints the text in the clipboard: what a window shows can be copied, and looked at from outside.
int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    std::cout << QGuiApplication::clipboard()->text().toStdString();
    return 0;
}
