#pragma once

#include <memory>
#include <optional>

#include "platform/process/windows/UniqueHandle.h"
#include "platform/serial/LineDevice.h"
#include "platform/serial/windows/DriverCall.h"

namespace burnwick {

// A serial port as Windows has it: a device whose calls go on beside the program. Its path may be "COM5",
// too.
class ComDevice final : public LineDevice {
public:
    ComDevice() = default;
    ComDevice(const ComDevice&) = delete;
    ComDevice& operator=(const ComDevice&) = delete;
    ~ComDevice() override;

    void DiscardInput() override;
    std::optional<WaitHandle> InputHandle() const override;

private:
    CommResult Take(const std::string& path) override;
    CommResult Prepare(const std::string& path, const LineSettings& settings) override;
    void Release() override;
    bool IsOpen() const override { return static_cast<bool>(Port_); }
    bool SetTo(const LineSettings& settings) override;
    std::optional<std::size_t> Receive(std::span<std::byte> room) override;
    // Returns before the message has left; waits for the one before it, a second at most.
    void Send(std::span<const std::byte> bytes) override;
    Unsent UnsentOutput() override;

    bool AwaitByte();
    std::optional<std::size_t> ReadWaiting(std::span<std::byte> room);

    UniqueHandle Port_;
    std::optional<DCB> LineBefore_;
    std::optional<COMMTIMEOUTS> TimeoutsBefore_;
    std::unique_ptr<DriverCall> Arrival_;
    std::unique_ptr<DriverCall> Input_;
    std::unique_ptr<DriverCall> Output_;
};

}  // namespace burnwick
