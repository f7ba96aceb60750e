#include "support/FakeDevice.h"

#include <algorithm>

namespace burnwick::test {

CommResult FakeDevice::Open(const std::string& path, const LineSettings& settings) {
    if (OpenError_ && (RefusedPath_.empty() || RefusedPath_ == path)) {
        return OpenError_;
    }
    IsOpen_ = true;
    ++Opens_;
    return Apply(settings) ? CommResult{} : CommError{CommErrorNumber::UnusableSettings, "no such speed"};
}

bool FakeDevice::Apply(const LineSettings& settings) {
    LetHappen();  // what has come by now, came at the old speed
    Settings_ = settings;
    Speeds_.push_back(settings.Baud);
    return true;
}

std::optional<std::size_t> FakeDevice::Read(std::span<std::byte> room) {
    if (Gone_) {
        return std::nullopt;
    }
    LetHappen();
    const auto count = std::min(room.size(), Waiting_.size());
    const auto end = Waiting_.begin() + static_cast<std::ptrdiff_t>(count);
    std::copy(Waiting_.begin(), end, room.begin());
    Waiting_.erase(Waiting_.begin(), end);
    return count;
}

void FakeDevice::Write(std::span<const std::byte> bytes) {
    if (!Gone_) {
        Sent_.push_back({Loop_.Time(), Settings_.Baud, Bytes(bytes.begin(), bytes.end())});
        HearFrame(Sent_.back());
    }
}

void FakeDevice::DiscardInput() {
    if (!Gone_) {
        LetHappen();
    }
    Waiting_.clear();
}

}  // namespace burnwick::test
