#pragma once

#include "platform/serial/SerialDevice.h"

namespace burnwick {

// A serial port of the system: what each system does in the same order and by the same rules. Its own device
// adds the calls, and closes itself when it ends.
class LineDevice : public SerialDevice {
public:
    LineDevice() = default;
    LineDevice(const LineDevice&) = delete;
    LineDevice& operator=(const LineDevice&) = delete;

    CommResult Open(const std::string& path, const LineSettings& settings) final;
    void Close() final;
    bool Apply(const LineSettings& settings) final;
    std::optional<std::size_t> Read(std::span<std::byte> room) final;
    // Nothing is written to a line that is gone.
    void Write(std::span<const std::byte> bytes) final;

protected:
    // What has not left yet of the bytes that were written.
    enum class Unsent {
        Some,
        Unknown,  // the driver has none left, but does not see what its chip still holds
        None,
    };

    bool IsGone() const { return Gone_; }
    // No byte will come any more: it stays so until the next Open.
    void SetGone() { Gone_ = true; }

private:
    // Opens the device for this program alone, its line still untouched.
    virtual CommResult Take(const std::string& path) = 0;
    // Applies the settings, and drops what arrived earlier.
    virtual CommResult Prepare(const std::string& path, const LineSettings& settings) = 0;
    // Puts the line's settings back, as far as they were touched, and closes.
    virtual void Release() = 0;
    virtual bool IsOpen() const = 0;

    // The rest is asked of a device that is open. False when the line cannot be set so; it then stays as it
    // was.
    virtual bool SetTo(const LineSettings& settings) = 0;
    // As Read, for a room that is not empty, on a line that is not gone.
    virtual std::optional<std::size_t> Receive(std::span<std::byte> room) = 0;
    // As Write, for at least one byte, on a line that is not gone.
    virtual void Send(std::span<const std::byte> bytes) = 0;
    virtual Unsent UnsentOutput() = 0;

    void LetOutputLeave();

    LineSettings Settings_;
    bool Wrote_ = false;
    bool Gone_ = false;
};

}  // namespace burnwick
