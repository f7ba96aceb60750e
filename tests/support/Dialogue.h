#pragma once

#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/FakeDevice.h"

namespace burnwick::test {

// A unit that follows a script: it hears one message after the other, and says what the script says then.
// Probes and flash requests that the script does not wait for go unheard; so does the finish message. Any
// other message that the script does not expect is remembered as unexpected.
class Dialogue final : public FakeDevice {
public:
    // An answer that comes so long after the message, or after the answer before it.
    static constexpr auto UsualDelay = std::chrono::milliseconds(5);

    class Step {
    public:
        Step(Dialogue& dialogue, std::size_t at) : Dialogue_(dialogue), At_(at) {}
        Step Says(std::string_view hex) const { return Says(UsualDelay, hex); }
        Step Says(Microseconds delay, std::string_view hex) const;
        // The unit's answer to a block request: FF AA 06 00 and 256 bytes of one value.
        Step SaysBlockOf(unsigned char value) const;
        Step Says(Microseconds delay, Bytes bytes) const;

    private:
        Dialogue& Dialogue_;
        std::size_t At_;
    };

    explicit Dialogue(VirtualLoop& loop);

    // The next message: whole, or its beginning when it is longer.
    Step Hears(std::string_view hex);
    // So many download blocks from this number on, each acknowledged.
    void AcknowledgesBlocks(int first, int count);
    // So many block requests from this number on, each answered with 256 bytes of the number's low byte.
    void GivesBlocks(int first, int count);
    // What comes by itself, so long after the line is first opened.
    void SaysUnasked(Microseconds delay, std::string_view hex);

    // Messages, as digits, that the script did not expect.
    const std::vector<std::string>& Unexpected() const { return Unexpected_; }
    // True when everything the script expects was heard.
    bool Finished() const { return Next_ == Steps_.size(); }

private:
    struct Expected {
        Bytes Beginning;
        std::vector<std::pair<Microseconds, Bytes>> Answers;
    };

    void HearFrame(const Frame& frame) override;
    void LetHappen() override;

    std::deque<Expected> Steps_;
    std::size_t Next_ = 0;
    std::vector<std::pair<Microseconds, Bytes>> Due_;
    std::vector<std::string> Unexpected_;
};

}  // namespace burnwick::test
