#include "job/TransferRate.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace burnwick {

namespace {

using namespace std::chrono_literals;

// Long enough not to jump, short enough to notice that the line has become slow.
constexpr auto Horizon = 8s;
constexpr auto SampleSpacing = 250ms;
constexpr auto ShortestView = 1s;
constexpr double BytesPerBlock = 256;

}  // namespace

void TransferRate::Add(std::chrono::milliseconds now, int block, int totalBlock) {
    TotalBlock_ = totalBlock;
    // The newest sample moves along until it is far enough from the one before it.
    if (Samples_.size() >= 2 && now - Samples_[Samples_.size() - 2].Time < SampleSpacing) {
        Samples_.back() = {now, block};
    } else {
        Samples_.push_back({now, block});
    }
    while (Samples_.size() > 2 && now - Samples_[1].Time >= Horizon) {
        Samples_.pop_front();
    }
}

std::string TransferRate::Text() const {
    if (Samples_.size() < 2 || Samples_.back().Time - Samples_.front().Time < ShortestView) {
        return {};
    }
    const std::chrono::duration<double> time = Samples_.back().Time - Samples_.front().Time;
    const double blocksPerSecond = (Samples_.back().Block - Samples_.front().Block) / time.count();
    if (blocksPerSecond <= 0) {
        return {};
    }
    const long left = std::lround((TotalBlock_ - Samples_.back().Block) / blocksPerSecond);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f KB/s, %ld:%02ld left",
                  blocksPerSecond * BytesPerBlock / 1000, left / 60, left % 60);
    return text.data();
}

}  // namespace burnwick
