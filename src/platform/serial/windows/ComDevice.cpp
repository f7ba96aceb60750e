#include "platform/serial/windows/ComDevice.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/process/windows/WideText.h"
#include "platform/serial/windows/ComErrors.h"
#include "platform/serial/windows/ComLine.h"
#include "platform/serial/windows/ComNames.h"

namespace burnwick {

namespace {

constexpr std::chrono::milliseconds longestCall = std::chrono::seconds(1);

std::optional<COMMTIMEOUTS> TimeoutsOf(HANDLE port) {
    COMMTIMEOUTS timeouts{};
    return GetCommTimeouts(port, &timeouts) != FALSE ? std::optional(timeouts) : std::nullopt;
}

// Bytes that wait in the driver; nothing when the line is gone.
std::optional<std::size_t> Waiting(HANDLE port) {
    COMSTAT state{};
    return ClearCommError(port, nullptr, &state) != FALSE ? std::optional<std::size_t>(state.cbInQue)
                                                          : std::nullopt;
}

}  // namespace

ComDevice::~ComDevice() {
    Close();
}

void ComDevice::DiscardInput() {
    if (!Port_) {
        return;
    }
    PurgeComm(Port_.Get(), PURGE_RXCLEAR);
    // The byte that was awaited has left the driver.
    if (!IsGone() && Arrival_->IsOver() && !AwaitByte()) {
        SetGone();
    }
}

std::optional<WaitHandle> ComDevice::InputHandle() const {
    return Port_ ? std::optional(reinterpret_cast<WaitHandle>(Arrival_->Done.Get())) : std::nullopt;
}

CommResult ComDevice::Take(const std::string& path) {
    constexpr DWORD forNobodyElse = 0;
    Port_.Reset(CreateFileW(WideText(ComPath(path)).c_str(), GENERIC_READ | GENERIC_WRITE, forNobodyElse,
                            nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    if (!Port_) {
        return DeviceError(path, GetLastError());
    }
    if (GetFileType(Port_.Get()) != FILE_TYPE_CHAR) {
        return NotSerialError(ComName(path));
    }
    return {};
}

CommResult ComDevice::Prepare(const std::string& path, const LineSettings& settings) {
    // Bytes that wait for a program which is busy otherwise: more than a second of the fastest line.
    constexpr DWORD roomForInput = 16384;
    constexpr DWORD roomForOutput = 4096;
    const auto before = LineOf(Port_.Get());
    if (!before) {
        return DeviceError(path, GetLastError());
    }
    LineBefore_ = before;
    TimeoutsBefore_ = TimeoutsOf(Port_.Get());
    // A wish: a driver may have its own mind.
    SetupComm(Port_.Get(), roomForInput, roomForOutput);
    if (!Apply(settings)) {
        return SettingsError(ComName(path), settings);
    }
    Arrival_ = std::make_unique<DriverCall>();
    Input_ = std::make_unique<DriverCall>();
    PurgeComm(Port_.Get(), PURGE_RXCLEAR);
    if (!SetTimeouts(Port_.Get()) || !AwaitByte()) {
        return DeviceError(path, GetLastError());
    }
    return {};
}

void ComDevice::Release() {
    EndCall(std::move(Output_), Port_.Get());
    EndCall(std::move(Arrival_), Port_.Get());
    EndCall(std::move(Input_), Port_.Get());
    if (LineBefore_) {
        SetCommState(Port_.Get(), &*LineBefore_);
    }
    if (TimeoutsBefore_) {
        SetCommTimeouts(Port_.Get(), &*TimeoutsBefore_);
    }
    Port_.Reset();
    LineBefore_.reset();
    TimeoutsBefore_.reset();
}

bool ComDevice::SetTo(const LineSettings& settings) {
    return SetLine(Port_.Get(), settings);
}

// The byte that was awaited, and what came behind it.
std::optional<std::size_t> ComDevice::Receive(std::span<std::byte> room) {
    if (!Arrival_->IsOver()) {
        return Waiting(Port_.Get()) ? std::optional<std::size_t>(0) : std::nullopt;
    }
    if (Arrival_->Result(Port_.Get(), {}) != 1U) {
        return std::nullopt;
    }
    room.front() = Arrival_->Bytes.front();
    const auto more = ReadWaiting(room.subspan(1));
    // What came before the end is still given.
    if (!more || !AwaitByte()) {
        SetGone();
    }
    return 1 + more.value_or(0);
}

void ComDevice::Send(std::span<const std::byte> bytes) {
    if (Output_) {
        Output_->Result(Port_.Get(), longestCall);
        EndCall(std::move(Output_), Port_.Get());
    }
    Output_ = std::make_unique<DriverCall>();
    Output_->Bytes.assign(bytes.begin(), bytes.end());
    Output_->Started(WriteFile(Port_.Get(), Output_->Bytes.data(), static_cast<DWORD>(bytes.size()), nullptr,
                               Output_->Fresh()));
}

LineDevice::Unsent ComDevice::UnsentOutput() {
    const bool isWriting = Output_ && !Output_->IsOver();
    return isWriting || DriverHoldsOutput(Port_.Get()) ? Unsent::Some : Unsent::Unknown;
}

// The driver is asked for one byte, whenever it comes: its arrival is what a loop sleeps for. False when the
// line is gone.
bool ComDevice::AwaitByte() {
    Arrival_->Bytes.resize(1);
    return Arrival_->Started(ReadFile(Port_.Get(), Arrival_->Bytes.data(), 1, nullptr, Arrival_->Fresh()));
}

// Asks for no more than is there, so that it never waits.
std::optional<std::size_t> ComDevice::ReadWaiting(std::span<std::byte> room) {
    const auto waiting = Waiting(Port_.Get());
    const auto count = std::min(waiting.value_or(0), room.size());
    if (!waiting || count == 0) {
        return waiting ? std::optional(count) : std::nullopt;
    }
    Input_->Bytes.resize(count);
    Input_->Started(
        ReadFile(Port_.Get(), Input_->Bytes.data(), static_cast<DWORD>(count), nullptr, Input_->Fresh()));
    const auto got = Input_->Result(Port_.Get(), longestCall);
    std::copy_n(Input_->Bytes.begin(), got.value_or(0), room.begin());
    return got;
}

std::unique_ptr<SerialDevice> NewSerialDevice() {
    return std::make_unique<ComDevice>();
}

}  // namespace burnwick
