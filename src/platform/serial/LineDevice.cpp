#include "platform/serial/LineDevice.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace burnwick {

CommResult LineDevice::Open(const std::string& path, const LineSettings& settings) {
    Close();
    auto error = Take(path);
    if (!error) {
        error = Prepare(path, settings);
    }
    if (error) {
        Close();
    }
    return error;
}

void LineDevice::Close() {
    if (!IsOpen()) {
        return;
    }
    if (Wrote_ && !Gone_) {
        LetOutputLeave();
    }
    Release();
    Wrote_ = false;
    Gone_ = false;
}

bool LineDevice::Apply(const LineSettings& settings) {
    if (!IsOpen() || !SetTo(settings)) {
        return false;
    }
    Settings_ = settings;
    return true;
}

std::optional<std::size_t> LineDevice::Read(std::span<std::byte> room) {
    if (!IsOpen() || Gone_) {
        return std::nullopt;
    }
    const auto got = room.empty() ? 0 : Receive(room);
    Gone_ = Gone_ || !got;
    return got;
}

void LineDevice::Write(std::span<const std::byte> bytes) {
    if (IsOpen() && !Gone_ && !bytes.empty()) {
        Wrote_ = true;
        Send(bytes);
    }
}

// Waits until the driver has nothing more to send, and the line had time for what its chip may still hold.
void LineDevice::LetOutputLeave() {
    using Clock = std::chrono::steady_clock;
    constexpr auto longestWait = std::chrono::seconds(1);
    constexpr auto step = std::chrono::milliseconds(1);
    // Characters that a chip may still hold when the driver has handed on its last one.
    constexpr int chipDepth = 20;

    const auto limit = Clock::now() + longestWait;
    auto unsent = UnsentOutput();
    for (; unsent == Unsent::Some && Clock::now() < limit; unsent = UnsentOutput()) {
        std::this_thread::sleep_for(step);
    }
    if (unsent == Unsent::Unknown) {
        const auto rest = std::chrono::duration_cast<Clock::duration>(chipDepth * CharacterTime(Settings_));
        std::this_thread::sleep_until(std::min(limit, Clock::now() + rest));
    }
}

}  // namespace burnwick
