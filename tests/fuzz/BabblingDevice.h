#pragma once

#include <array>
#include <optional>
#include <vector>

#include "fuzz/Input.h"
#include "support/FakeDevice.h"

namespace burnwick::test {

// A device that says what the fuzzer's input says, when it says so: by itself, or after a frame it has heard.
// What an answer looks like it knows, so that the input gets far into a run with few bytes.
class BabblingDevice final : public FakeDevice {
public:
    // Takes all of the input.
    BabblingDevice(VirtualLoop& loop, Input& input);

    // When bytes last reached the host.
    Microseconds LastArrival() const { return LastArrival_; }
    // How often FF AA 06 stood in the bytes that reached the host.
    int Acknowledgements() const { return Acknowledgements_; }

private:
    struct Saying {
        bool AwaitsFrame = false;
        Microseconds Delay{};
        Bytes Content;
        int Times = 1;
    };

    void HearFrame(const Frame& frame) override;
    void LetHappen() override;

    Saying TakeSaying(Input& input);
    void Prepare(Microseconds now, bool frameHeard);
    void Count(const Bytes& arrived);

    std::vector<Saying> Sayings_;
    std::size_t Next_ = 0;
    int Said_ = 0;  // times that the next saying has been said
    std::optional<Microseconds> Due_;
    Microseconds Patience_;  // what is left of the time that all delays may take together
    Microseconds LastArrival_{};
    std::array<std::byte, 3> Newest_{};
    int Acknowledgements_ = 0;
};

}  // namespace burnwick::test
