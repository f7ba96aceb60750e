#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/loop/MessageLoop.h"

namespace burnwick {

// The main window's caption. During a run, progress replaces it while another window is active.
class TitleBar {
public:
    // `progress` gives the text that stands in the caption's place, `flash` draws the title bar inverted
    // once. Window and loop must outlive the title bar.
    TitleBar(QWidget& window, EventLoop& loop, std::function<std::string()> progress,
             std::function<void()> flash);

    bool IsActive() const;
    void SetCaption(const std::string& caption);
    void RestoreCaption();

    void BeginRun();
    void EndRun();
    // Flashes until the window is active.
    void CallUser() { tmrFlashWindow->SetEnabled(true); }
    void Stop();

private:
    void tmrTimeOut_Timer();
    void tmrFlashWindow_Timer();

    QWidget& Window_;
    std::function<std::string()> Progress_;
    std::function<void()> Flash_;
    std::unique_ptr<Timer> tmrTimeOut;
    std::unique_ptr<Timer> tmrFlashWindow;
    std::string Caption_;
    bool ShowsProgress_ = false;
};

}  // namespace burnwick
