#include "gui/WindowUser.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <algorithm>
#include <filesystem>

#include "engine/PercentBar.h"
#include "gui/Picture.h"
#include "support/SampleImages.h"

namespace burnwick::test {

WindowUser::WindowUser() {
    std::filesystem::create_directory(Folder.Path() / "home");
}

WindowUser::~WindowUser() {
    EXPECT_TRUE(Waiting_.empty()) << "never said: " << Waiting_.front().first;
}

std::string WindowUser::Image(const std::string& name) const {
    return Folder.Write(name, SampleImage(ImageSize));
}

void WindowUser::Download(const std::string& path) {
    User.TypeFile(path);
    Click("cmdDownload");
}

void WindowUser::Upload(int chip, const std::string& path) {
    User.Next([chip](QDialog& dialog) {
        auto* const option = dialog.findChild<QRadioButton*>("optChipSize_" + QString::number(chip));
        ASSERT_NE(option, nullptr);
        // On its circle: beside circle and text a click means nothing.
        QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(8, option->height() / 2));
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    });
    User.TypeFile(path);
    Click("cmdUpload");
}

void WindowUser::Click(const char* button) const {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    if (button == std::string("cmdDownload") || button == std::string("cmdUpload")) {
        AwaitEndOfRun();
    }
}

void WindowUser::Trigger(const char* command) const {
    Find<QAction>(command)->trigger();
    AwaitEndOfRun();
}

void WindowUser::WhenStatus(const std::string& begins, std::function<void()> action) {
    Waiting_.emplace_back(begins, std::move(action));
}

void WindowUser::LookAtStatus() {
    if (!Waiting_.empty() && Window && Status().starts_with(Waiting_.front().first)) {
        const auto action = std::move(Waiting_.front().second);
        Waiting_.erase(Waiting_.begin());
        action();
    }
}

std::string WindowUser::TextOf(const char* label) const {
    return Find<QLabel>(label)->text().toStdString();
}

std::string WindowUser::Display() const {
    return Find<QPlainTextEdit>("txtDisplay")->toPlainText().toStdString();
}

std::string WindowUser::BarText() const {
    return Find<PercentBar>("PercentBar1")->Text().toStdString();
}

bool WindowUser::IsIdle() const {
    return Find("cmdDownload")->isEnabled() && Find("cmdUpload")->isEnabled() && Find("cmdQuit")->isEnabled()
           && Find<QPushButton>("cmdQuit")->text() == "&Quit" && Find<QMenu>("mnuFile")->isEnabled()
           && Find<QMenu>("mnuTools")->isEnabled() && Find<QMenu>("mnuHelp")->isEnabled()
           && !Find("lblStatus")->isHidden() && Find("lblTiming")->isHidden();
}

std::string WindowUser::LogText() const {
    const Bytes bytes = ReadFile(Folder.Path() / "home" / "Burnwick.log");
    std::string text(bytes.size(), ' ');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::byte b) { return static_cast<char>(b); });
    return text;
}

void WindowUser::Picture(const std::string& name) const {
    QCoreApplication::processEvents();
    EXPECT_TRUE(TakePictureOf(*Window, QString::fromStdString(name)));
}

}  // namespace burnwick::test
