#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

// A call that the driver works on while the program goes on; its memory is the driver's until it is over.
struct DriverCall {
    DriverCall();

    // What a call gets when it starts: `overlapped` as if it had never been used.
    OVERLAPPED* Fresh();
    // Takes what the starting function returned. False when it could not be started.
    bool Started(BOOL result);
    bool IsOver() const;
    // Waits for its end, at most so long, and tells how many bytes it moved; nothing when it failed or goes
    // on.
    std::optional<DWORD> Result(HANDLE port, std::chrono::milliseconds atMost);

    UniqueHandle Done;  // an event, set when the call is over
    OVERLAPPED Overlapped{};
    bool Running = false;
    std::vector<std::byte> Bytes;
};

// Ends the call, whatever it has done so far. What a driver does not give back in a second stays allocated
// for ever: it may still be written to.
void EndCall(std::unique_ptr<DriverCall> call, HANDLE port);

}  // namespace burnwick
