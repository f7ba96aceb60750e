// Pictures of the window in each of its states, to be looked at. What can be told without an eye is tested:
// that nothing is cut off, and that the bar alone has colours of its own.
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "engine/PercentBar.h"
#include "gui/DarkDesktop.h"
#include "gui/Picture.h"
#include "gui/WindowTest.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using simulator::Fault;

}  // namespace

class frmMainPictures : public WindowTest {
protected:
    // "frmMain-sending", or "frmMain-sending@2x" on a screen of twice the pixels.
    void Take(const std::string& state) const {
        Picture("frmMain-" + state + Scale());
        ExpectNothingCutOff();
    }
    void TakeBox(QDialog& box, const std::string& name) const {
        EXPECT_TRUE(TakePictureOf(box, QString::fromStdString("box-" + name + Scale())));
        QTest::keyClick(&box, Qt::Key_Return);
    }
    std::string Scale() const {
        const double ratio = Window->screen()->devicePixelRatio();
        return ratio == 1 ? "" : "@" + QString::number(ratio).toStdString() + "x";
    }
    void ExpectNothingCutOff() const {
        for (const QWidget* const control : Window->findChildren<QWidget*>()) {
            if (control->isVisible() && control->objectName().startsWith("lbl")) {
                EXPECT_GE(control->width(), control->minimumSizeHint().width()) << Name(control);
            }
            if (control->isVisible() && control->objectName().startsWith("cmd")) {
                EXPECT_GE(control->width(), control->sizeHint().width()) << Name(control);
            }
        }
    }
    static std::string Name(const QWidget* control) { return control->objectName().toStdString(); }
};

TEST_F(frmMainPictures, Idle) {
    Start();
    Take("idle");
}

TEST_F(frmMainPictures, Waiting) {
    Start();
    At(7s, [this] {
        Take("waiting");
        Click("cmdQuit");
    });
    Download(Image());
}

TEST_F(frmMainPictures, Sending) {
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    WhenStatus("Sending block 600", [this] { Take("sending"); });
    Download(Image());
    Take("done");
}

TEST_F(frmMainPictures, Failed) {
    ConnectUnitOfSize(ImageSize, {{Fault::NoAnswer, 400}});
    Start();
    User.TypeFile(Image());
    User.Next([this](QDialog& box) {
        Take("failed");
        TakeBox(box, "transmitting-error");
    });
    Click("cmdDownload");
}

TEST_F(frmMainPictures, Verifying) {
    Settings["Options/Verify"] = "1";
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    WhenStatus("Verifying block 300", [this] { Take("verifying"); });
    User.TypeFile(Image());
    User.Next([this](QDialog& box) { TakeBox(box, "verification"); });
    Click("cmdDownload");
    Take("verified");
}

TEST_F(frmMainPictures, OfAPortThatIsNotPermitted) {
    PortTrouble =
        CommError{CommErrorNumber::NotPermitted,
                  "/dev/ttyS0: permission denied: add yourself to the group that owns it (dialout)"};
    Start();
    User.TypeFile(Image());
    User.Next([this](QDialog& box) { TakeBox(box, "commport-error"); });
    User.Escape();
    Click("cmdDownload");
    Take("port");
}

TEST_F(frmMainPictures, OfDebugging) {
    Debug = true;
    Start();
    Take("debug");
}

TEST_F(frmMainPictures, OfLongTexts) {
    Start(Folder / std::string(200, 'm') + ".bin");
    Find<QLabel>("lblVersion")->setText(QString(100, 'W'));
    Take("long");
}

TEST_F(frmMainPictures, InTheDark) {
    const DarkDesktop dark;
    simulator::UnitOptions options;
    options.Flash = AnyBytes(ImageSize);
    Connect(std::move(options), /*paced=*/true);
    Start();
    Take("dark-idle");
    WhenStatus("Sending block 600", [this] { Take("dark-sending"); });
    Download(Image());
    Take("dark-done");
}

TEST_F(frmMainPictures, WithoutAnyHardColourButTheBars) {
    Start();
    for (const QWidget* const control : Window->findChildren<QWidget*>()) {
        EXPECT_TRUE(control->styleSheet().isEmpty()) << Name(control);
        EXPECT_FALSE(control->testAttribute(Qt::WA_SetPalette)) << Name(control);
    }
}

}  // namespace burnwick::test
