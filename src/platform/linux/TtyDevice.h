#pragma once

#include <termios.h>

#include <optional>

#include "platform/SerialDevice.h"
#include "platform/linux/UniqueFd.h"

namespace burnwick {

// A serial port as Linux has it: a terminal device in raw mode.
class TtyDevice final : public SerialDevice {
public:
    TtyDevice() = default;
    TtyDevice(const TtyDevice&) = delete;
    TtyDevice& operator=(const TtyDevice&) = delete;
    ~TtyDevice() override;

    CommResult Open(const std::string& path, const LineSettings& settings) override;
    void Close() override;
    bool Apply(const LineSettings& settings) override;
    std::optional<std::size_t> Read(std::span<std::byte> room) override;
    void Write(std::span<const std::byte> bytes) override;
    void DiscardInput() override;
    std::optional<WaitHandle> InputHandle() const override;

private:
    CommResult Take(const std::string& path);
    CommResult Prepare(const std::string& path, const LineSettings& settings);

    UniqueFd Fd_;
    LineSettings Settings_;
    std::optional<termios> LineBefore_;
    std::optional<int> DriverFlagsBefore_;
    bool Wrote_ = false;
    bool Gone_ = false;
};

}  // namespace burnwick
