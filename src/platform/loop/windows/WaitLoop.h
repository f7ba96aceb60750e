#pragma once

#include <optional>
#include <vector>

#include "platform/loop/HandleLoop.h"
#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

// The message loop of a program without a window: one WaitForMultipleObjects() a Yield. Handles are those
// that the system can wait for, events above all; the first 63 of them end a sleep.
class WaitLoop final : public HandleLoop {
public:
    WaitLoop();

    std::tm Now() const override;

private:
    bool Sleep(std::span<const WaitHandle> handles, std::chrono::microseconds atMost) override;
    Readiness StateOf(std::size_t index) override;
    DWORD Wait(std::vector<HANDLE> handles, std::chrono::microseconds atMost);

    UniqueHandle Alarm_;
    std::vector<HANDLE> Asked_;
    // The first one that was ready: the wait has taken its signal.
    std::optional<std::size_t> Taken_;
};

}  // namespace burnwick
