#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/loop/MessageLoop.h"
#include "platform/serial/CommError.h"
#include "platform/serial/LineSettings.h"

namespace burnwick {

// The system's side of a serial port: calls, no policy. MSComm stands on it.
class SerialDevice {
public:
    virtual ~SerialDevice() = default;

    // Opens the device for this process alone, and sets the line. Leaves nothing open when it fails.
    virtual CommResult Open(const std::string& path, const LineSettings& settings) = 0;

    // Gives what is still going out up to a second to leave, puts the line's settings back and closes.
    virtual void Close() = 0;

    // False when the line cannot be set so; it then stays as it was.
    virtual bool Apply(const LineSettings& settings) = 0;

    // Puts bytes that have arrived into `room`, without waiting, and tells how many.
    // Nothing when the line is gone (a pulled adapter): it stays so until the next Open.
    virtual std::optional<std::size_t> Read(std::span<std::byte> room) = 0;

    // Hands all bytes to the driver, in one call while the driver takes them. A failure is ignored: it shows
    // as a missing answer.
    virtual void Write(std::span<const std::byte> bytes) = 0;

    // Drops what has arrived and was not read. What is going out is never touched.
    virtual void DiscardInput() = 0;

    // What a message loop watches for input while the device is open; nothing when the loop learns it
    // otherwise.
    virtual std::optional<WaitHandle> InputHandle() const = 0;
};

// The system's serial ports.
std::unique_ptr<SerialDevice> NewSerialDevice();

}  // namespace burnwick
