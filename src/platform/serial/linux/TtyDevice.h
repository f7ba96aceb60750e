#pragma once

#include <termios.h>

#include <optional>

#include "platform/files/linux/UniqueFd.h"
#include "platform/serial/LineDevice.h"

namespace burnwick {

// A serial port as Linux has it: a terminal device in raw mode.
class TtyDevice final : public LineDevice {
public:
    TtyDevice() = default;
    TtyDevice(const TtyDevice&) = delete;
    TtyDevice& operator=(const TtyDevice&) = delete;
    ~TtyDevice() override;

    void DiscardInput() override;
    std::optional<WaitHandle> InputHandle() const override;

private:
    CommResult Take(const std::string& path) override;
    CommResult Prepare(const std::string& path, const LineSettings& settings) override;
    void Release() override;
    bool IsOpen() const override { return static_cast<bool>(Fd_); }
    bool SetTo(const LineSettings& settings) override;
    std::optional<std::size_t> Receive(std::span<std::byte> room) override;
    void Send(std::span<const std::byte> bytes) override;
    Unsent UnsentOutput() override;

    UniqueFd Fd_;
    std::optional<termios> LineBefore_;
    std::optional<int> DriverFlagsBefore_;
};

}  // namespace burnwick
