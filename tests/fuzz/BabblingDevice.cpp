#include "fuzz/BabblingDevice.h"

#include <utility>

#include "engine/FlashMessages.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

// A line that never falls quiet may keep a run alive for as long as it babbles.
constexpr Microseconds LongestBabble = 30min;

// Around the limits of the host's patience, and where bytes come in one by one.
constexpr std::array<Microseconds, 8> Delays{0us, 1ms, 5ms, 50ms, 150ms, 1'950ms, 9'950ms, 59'900ms};

Bytes Answer(std::uint8_t code) {
    return {std::byte{0xFF}, std::byte{0xAA}, std::byte{code}, std::byte{0}};
}

Bytes BlockAnswer(std::uint8_t fill, std::size_t dataLength) {
    Bytes answer = Answer(6);
    answer.insert(answer.end(), dataLength, std::byte{fill});
    return answer;
}

Bytes IdentityAnswer(std::uint8_t identity) {
    Bytes answer{std::byte{0x10}, std::byte{0x01}, std::byte{identity}, std::byte{0}};
    const Bytes ready = Answer(5);
    answer.insert(answer.end(), ready.begin(), ready.end());
    return answer;
}

Bytes FlashRequestAcknowledgement() {
    return {std::byte{0}, std::byte{0x10}, std::byte{0}, std::byte{0}, std::byte{0}, std::byte{1}};
}

Bytes TakeContent(unsigned kind, Input& input) {
    constexpr std::size_t longestNoise = 63;
    switch (kind) {
        case 0:
            return Answer(5);
        case 1:
        case 2:
            return Answer(6);
        case 3:
            return Answer(7);
        case 4:
            return Answer(8);
        case 5:
        case 6:
            return BlockAnswer(input.TakeByte(), BlockSize);
        case 7:
            return BlockAnswer(input.TakeByte(), input.TakeByte());
        case 8:
            return IdentityAnswer(input.TakeByte());
        case 9:
            return FlashRequestAcknowledgement();
        default:
            return input.TakeBytes(input.TakeByte() & longestNoise);
    }
}

}  // namespace

BabblingDevice::BabblingDevice(VirtualLoop& loop, Input& input) : FakeDevice(loop), Patience_(LongestBabble) {
    while (!input.IsEmpty()) {
        Sayings_.push_back(TakeSaying(input));
    }
    loop.AddSource(this, {[this] { return Due_; }, [this] { LetHappen(); }});
    Prepare(loop.Time(), false);
}

BabblingDevice::Saying BabblingDevice::TakeSaying(Input& input) {
    constexpr unsigned manyAcknowledgements = 2;
    constexpr unsigned manyBlocks = 6;
    const unsigned tag = input.TakeByte();
    const unsigned kind = tag >> 3 & 15;
    Saying saying;
    saying.AwaitsFrame = (tag & 0x80) != 0;
    saying.Delay = Delays.at(tag & 7);
    saying.Content = TakeContent(kind, input);
    if (saying.AwaitsFrame && (kind == manyAcknowledgements || kind == manyBlocks)) {
        saying.Times = 1 + 4 * input.TakeByte();
    }
    if (saying.Times * saying.Delay > Patience_) {
        saying.Delay = 0us;
    }
    Patience_ -= saying.Times * saying.Delay;
    return saying;
}

void BabblingDevice::HearFrame(const Frame& frame) {
    Prepare(frame.At, true);
}

void BabblingDevice::LetHappen() {
    while (Due_ && *Due_ <= Loop().Time()) {
        const auto at = *std::exchange(Due_, std::nullopt);
        const auto& saying = Sayings_[Next_];
        if (IsOpen() && !saying.Content.empty()) {
            Arrive(saying.Content);
            Count(saying.Content);
            LastArrival_ = at;
        }
        if (++Said_ == saying.Times) {
            ++Next_;
            Said_ = 0;
        }
        Prepare(at, false);
    }
}

// Settles when the next saying comes, once that can be told.
void BabblingDevice::Prepare(Microseconds now, bool frameHeard) {
    if (!Due_ && Next_ < Sayings_.size() && Sayings_[Next_].AwaitsFrame == frameHeard) {
        Due_ = now + Sayings_[Next_].Delay;
    }
}

void BabblingDevice::Count(const Bytes& arrived) {
    constexpr std::array acknowledgement{std::byte{0xFF}, std::byte{0xAA}, std::byte{6}};
    for (const std::byte value : arrived) {
        Newest_ = {Newest_[1], Newest_[2], value};
        Acknowledgements_ += Newest_ == acknowledgement ? 1 : 0;
    }
}

}  // namespace burnwick::test
