#include "platform/serial/windows/DriverCall.h"

namespace burnwick {

namespace {

constexpr std::chrono::milliseconds longestEnd = std::chrono::seconds(1);

DWORD Milliseconds(std::chrono::milliseconds time) {
    return static_cast<DWORD>(time.count());
}

}  // namespace

DriverCall::DriverCall() : Done(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

OVERLAPPED* DriverCall::Fresh() {
    Overlapped = {};
    Overlapped.hEvent = Done.Get();
    return &Overlapped;
}

bool DriverCall::Started(BOOL result) {
    Running = result != FALSE || GetLastError() == ERROR_IO_PENDING;
    return Running;
}

bool DriverCall::IsOver() const {
    return !Running || HasOverlappedIoCompleted(&Overlapped);
}

std::optional<DWORD> DriverCall::Result(HANDLE port, std::chrono::milliseconds atMost) {
    if (!IsOver()) {
        WaitForSingleObject(Done.Get(), Milliseconds(atMost));
    }
    DWORD moved = 0;
    if (!Running || GetOverlappedResult(port, &Overlapped, &moved, FALSE) == FALSE) {
        return std::nullopt;
    }
    return moved;
}

void EndCall(std::unique_ptr<DriverCall> call, HANDLE port) {
    if (!call || call->IsOver()) {
        return;
    }
    CancelIoEx(port, &call->Overlapped);
    if (!call->IsOver()) {
        WaitForSingleObject(call->Done.Get(), Milliseconds(longestEnd));
    }
    if (!call->IsOver()) {
        static_cast<void>(call.release());
    }
}

}  // namespace burnwick
