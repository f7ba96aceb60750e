#include "app/TitleBar.h"

#include <QApplication>
#include <chrono>
#include <utility>

namespace burnwick {

using namespace std::chrono_literals;

TitleBar::TitleBar(QWidget& window, EventLoop& loop, std::function<std::string()> progress,
                   std::function<void()> flash)
    : Window_(window),
      Progress_(std::move(progress)),
      Flash_(std::move(flash)),
      tmrTimeOut(loop.NewTimer(100ms, [this] { tmrTimeOut_Timer(); })),
      tmrFlashWindow(loop.NewTimer(300ms, [this] { tmrFlashWindow_Timer(); })) {}

bool TitleBar::IsActive() const {
    return QApplication::activeWindow() == &Window_;
}

// A caption that is set while progress replaces it is the one that RestoreCaption shows.
void TitleBar::SetCaption(const std::string& caption) {
    Caption_ = caption;
    Window_.setWindowTitle(QString::fromStdString(caption));
}

void TitleBar::RestoreCaption() {
    if (ShowsProgress_) {
        SetCaption(Caption_);
        ShowsProgress_ = false;
    }
}

void TitleBar::BeginRun() {
    ShowsProgress_ = false;
    tmrTimeOut->SetEnabled(true);
}

void TitleBar::EndRun() {
    tmrTimeOut->SetEnabled(false);
    RestoreCaption();
}

void TitleBar::Stop() {
    tmrTimeOut->SetEnabled(false);
    tmrFlashWindow->SetEnabled(false);
}

void TitleBar::tmrTimeOut_Timer() {
    if (IsActive()) {
        RestoreCaption();
        return;
    }
    ShowsProgress_ = true;
    Window_.setWindowTitle(QString::fromStdString(Progress_()));
}

void TitleBar::tmrFlashWindow_Timer() {
    if (IsActive()) {
        tmrFlashWindow->SetEnabled(false);
    } else {
        Flash_();
    }
}

}  // namespace burnwick
