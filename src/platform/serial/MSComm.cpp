#include "platform/serial/MSComm.h"

#include <array>
#include <utility>

namespace burnwick {

MSComm::MSComm(MessageLoop& loop, std::unique_ptr<SerialDevice> device, PortTable deviceOf)
    : Loop_(loop), Device_(std::move(device)), DeviceOf_(std::move(deviceOf)) {}

MSComm::~MSComm() {
    Close();
}

CommResult MSComm::SetCommPort(int port) {
    if (PortOpen_) {
        return CommError{CommErrorNumber::NotWhileOpen,
                         "The port number cannot be changed while the port is open"};
    }
    if (port < FirstPort || port > LastPort) {
        return CommError{CommErrorNumber::InvalidPortNumber,
                         "COM" + std::to_string(port) + " is no port number: choose COM1 to COM16"};
    }
    CommPort_ = port;
    return {};
}

CommResult MSComm::SetSettings(std::string_view text) {
    const auto parsed = ParseLineSettings(text);
    if (!parsed || (PortOpen_ && !Device_->Apply(*parsed))) {
        return CommError{CommErrorNumber::UnusableSettings,
                         "The line cannot be set to \"" + std::string(text) + "\""};
    }
    Settings_ = text;
    LineSettings_ = *parsed;
    return {};
}

CommResult MSComm::SetPortOpen(bool open) {
    if (open == PortOpen_) {
        return open ? CommError{CommErrorNumber::NotWhileOpen, "The port is already open"}
                    : CommError{CommErrorNumber::NotOpen, "The port is not open"};
    }
    if (open) {
        return Open();
    }
    Close();
    return {};
}

std::size_t MSComm::InBufferCount() {
    TakeFromDevice();
    return InBuffer_.size();
}

void MSComm::DiscardInput() {
    InBuffer_.clear();
    if (PortOpen_) {
        Device_->DiscardInput();
    }
}

std::vector<std::byte> MSComm::Input() {
    TakeFromDevice();
    return std::exchange(InBuffer_, {});
}

void MSComm::Output(std::span<const std::byte> bytes) {
    if (PortOpen_) {
        OutBufferCount_ += bytes.size();
        Device_->Write(bytes);
    }
}

CommResult MSComm::Open() {
    if (auto error = Device_->Open(DeviceOf_(CommPort_), LineSettings_)) {
        return error;
    }
    PortOpen_ = true;
    InBuffer_.clear();
    OutBufferCount_ = 0;
    if (const auto handle = Device_->InputHandle()) {
        Watch_ = Loop_.WatchInput(*handle, [this] { TakeFromDevice(); });
    }
    return {};
}

void MSComm::Close() {
    if (PortOpen_) {
        Watch_.reset();
        Device_->Close();
        PortOpen_ = false;
        InBuffer_.clear();
    }
}

void MSComm::TakeFromDevice() {
    if (!PortOpen_) {
        return;
    }
    std::array<std::byte, 512> room{};
    std::optional<std::size_t> got;
    do {
        got = Device_->Read(room);
        InBuffer_.insert(InBuffer_.end(), room.begin(),
                         room.begin() + static_cast<std::ptrdiff_t>(got.value_or(0)));
    } while (got == room.size());
    if (!got) {
        // A line that is gone is always "ready"; watching it further would spin.
        Watch_.reset();
    }
}

}  // namespace burnwick
