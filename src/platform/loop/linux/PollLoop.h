#pragma once

#include <poll.h>

#include <vector>

#include "platform/loop/HandleLoop.h"

namespace burnwick {

// The message loop of a program without a window: one ppoll() a Yield.
class PollLoop final : public HandleLoop {
public:
    std::tm Now() const override;

private:
    bool Sleep(std::span<const WaitHandle> handles, std::chrono::microseconds atMost) override;
    Readiness StateOf(std::size_t index) override;

    std::vector<pollfd> Fds_;
};

}  // namespace burnwick
