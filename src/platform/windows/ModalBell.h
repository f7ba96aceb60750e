#pragma once

#include <QAbstractNativeEventFilter>
#include <atomic>
#include <chrono>
#include <functional>

#include "platform/windows/SystemHeaders.h"

namespace burnwick {

// Rings every few milliseconds, as coarse as the system's clock is, in a loop that the system itself runs on
// this thread (while a window is dragged or a menu of the system is open), and only there. A loop that takes
// nothing but the mouse does not hear it. Costs nothing until it is started.
class ModalBell final : public QAbstractNativeEventFilter {
public:
    static constexpr auto Interval = std::chrono::milliseconds(10);

    // `ring` may start and stop the bell.
    explicit ModalBell(std::function<void()> ring);
    ModalBell(const ModalBell&) = delete;
    ModalBell& operator=(const ModalBell&) = delete;
    ~ModalBell() override;

    void Start();
    void Stop();
    // Once before its time, if it is started.
    void RingSoon();
    // Asks the loop that the system runs to come to its end.
    void CancelLoop() const;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void Post();
    static LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void CALLBACK Pull(PTP_CALLBACK_INSTANCE instance, PVOID bell, PTP_TIMER timer);

    std::function<void()> Ring_;
    HWND Window_;
    PTP_TIMER Timer_;
    std::atomic<bool> Posted_ = false;
    bool Started_ = false;
};

}  // namespace burnwick
