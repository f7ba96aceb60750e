#pragma once

#include <memory>
#include <optional>

#include "platform/SerialDevice.h"
#include "platform/windows/DriverCall.h"
#include "platform/windows/UniqueHandle.h"

namespace burnwick {

// A serial port as Windows has it: a device whose calls go on beside the program.
class ComDevice final : public SerialDevice {
public:
    ComDevice() = default;
    ComDevice(const ComDevice&) = delete;
    ComDevice& operator=(const ComDevice&) = delete;
    ~ComDevice() override;

    // `path` may be "COM5", too.
    CommResult Open(const std::string& path, const LineSettings& settings) override;
    void Close() override;
    bool Apply(const LineSettings& settings) override;
    std::optional<std::size_t> Read(std::span<std::byte> room) override;
    // Returns before the message has left; waits for the one before it, a second at most.
    void Write(std::span<const std::byte> bytes) override;
    void DiscardInput() override;
    std::optional<WaitHandle> InputHandle() const override;

private:
    CommResult Take(const std::string& path);
    CommResult Prepare(const std::string& path, const LineSettings& settings);
    bool AwaitByte();
    std::optional<std::size_t> TakeArrived(std::span<std::byte> room);
    std::optional<std::size_t> ReadWaiting(std::span<std::byte> room);
    void FinishOutput();

    UniqueHandle Port_;
    LineSettings Settings_;
    std::optional<DCB> LineBefore_;
    std::optional<COMMTIMEOUTS> TimeoutsBefore_;
    std::unique_ptr<DriverCall> Arrival_;
    std::unique_ptr<DriverCall> Input_;
    std::unique_ptr<DriverCall> Output_;
    bool Wrote_ = false;
    bool Gone_ = false;
};

}  // namespace burnwick
