#include <gmock/gmock.h>

#include <QApplication>

// What the toolkit and the font library keep until the process ends is not ours to free.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libQt6\nleak:libglib\nleak:libdbus\n";
}

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", SCREEN);
    // A dialog of the system's own has no controls that a test could look for.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
