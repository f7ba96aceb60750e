#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/loop/MessageLoop.h"
#include "platform/serial/CommError.h"
#include "platform/serial/LineSettings.h"
#include "platform/serial/SerialDevice.h"

namespace burnwick {

enum class InputMode { Text = 0, Binary = 1 };

// The serial control: a numbered COM port with its settings, and what has arrived on it.
// Nothing here throws; bytes written to a line that is gone are lost without a word.
class MSComm {
public:
    static constexpr int FirstPort = 1;
    static constexpr int LastPort = 16;

    // The device path of a COM number.
    using PortTable = std::function<std::string(int port)>;

    // The loop must outlive the control.
    MSComm(MessageLoop& loop, std::unique_ptr<SerialDevice> device, PortTable deviceOf);
    MSComm(const MSComm&) = delete;
    MSComm& operator=(const MSComm&) = delete;
    ~MSComm();

    int CommPort() const { return CommPort_; }
    // Refused while the port is open, and outside FirstPort to LastPort.
    CommResult SetCommPort(int port);

    // "57600,N,8,1". A text that the line cannot be set to is refused, and leaves text and line as they were.
    const std::string& Settings() const { return Settings_; }
    CommResult SetSettings(std::string_view text);

    bool PortOpen() const { return PortOpen_; }
    CommResult SetPortOpen(bool open);

    burnwick::InputMode InputMode() const { return InputMode_; }
    void SetInputMode(burnwick::InputMode mode) { InputMode_ = mode; }

    // Bytes that wait to be taken.
    std::size_t InBufferCount();
    // InBufferCount = 0: drops what waits.
    void DiscardInput();
    // Takes all that waits.
    std::vector<std::byte> Input();

    // Bytes written since the count was last set to 0; bookkeeping only.
    std::size_t OutBufferCount() const { return OutBufferCount_; }
    // OutBufferCount = 0. Bytes handed to the driver still leave.
    void ResetOutBufferCount() { OutBufferCount_ = 0; }
    // Writes one message with one call.
    void Output(std::span<const std::byte> bytes);

private:
    CommResult Open();
    void Close();
    void TakeFromDevice();

    MessageLoop& Loop_;
    std::unique_ptr<SerialDevice> Device_;
    PortTable DeviceOf_;
    int CommPort_ = FirstPort;
    std::string Settings_ = "9600,N,8,1";
    LineSettings LineSettings_;
    bool PortOpen_ = false;
    burnwick::InputMode InputMode_ = burnwick::InputMode::Text;
    std::vector<std::byte> InBuffer_;
    std::size_t OutBufferCount_ = 0;
    std::unique_ptr<Watch> Watch_;
};

}  // namespace burnwick
