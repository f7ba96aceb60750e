#include "support/Dialogue.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "engine/FlashMessages.h"
#include "support/Hex.h"

namespace burnwick::test {

namespace {

bool StartsWith(const Bytes& frame, const Bytes& beginning) {
    return frame.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), frame.begin());
}

std::string BlockBeginning(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "FF AA 03 %02X %02X", static_cast<unsigned>(number) & 0xFF,
                  static_cast<unsigned>(number) >> 8 & 0xFF);
    return text.data();
}

}  // namespace

Dialogue::Step Dialogue::Step::Says(Microseconds delay, std::string_view hex) const {
    return Says(delay, FromHex(hex));
}

Dialogue::Step Dialogue::Step::Says(Microseconds delay, Bytes bytes) const {
    Dialogue_.Steps_[At_].Answers.emplace_back(delay, std::move(bytes));
    return *this;
}

Dialogue::Step Dialogue::Step::SaysBlockOf(unsigned char value) const {
    Bytes answer = FromHex("FF AA 06 00");
    answer.resize(answer.size() + BlockSize, std::byte{value});
    return Says(UsualDelay, std::move(answer));
}

Dialogue::Dialogue(VirtualLoop& loop) : FakeDevice(loop) {
    loop.AddSource(this, {[this]() -> std::optional<Microseconds> {
                              if (Due_.empty()) {
                                  return std::nullopt;
                              }
                              return Due_.front().first;
                          },
                          [this] { LetHappen(); }});
}

Dialogue::Step Dialogue::Hears(std::string_view hex) {
    Steps_.push_back({FromHex(hex), {}});
    return {*this, Steps_.size() - 1};
}

void Dialogue::AcknowledgesBlocks(int first, int count) {
    for (int number = first; number < first + count; ++number) {
        Hears(BlockBeginning(number)).Says("FF AA 06 00");
    }
}

void Dialogue::GivesBlocks(int first, int count) {
    for (int number = first; number < first + count; ++number) {
        Hears(BlockBeginning(number)).SaysBlockOf(static_cast<unsigned char>(number));
    }
}

void Dialogue::SaysUnasked(Microseconds delay, std::string_view hex) {
    Due_.emplace_back(Loop().Time() + delay, FromHex(hex));
    std::stable_sort(Due_.begin(), Due_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
}

void Dialogue::HearFrame(const Frame& frame) {
    static const std::vector<Bytes> goUnheard{FromHex("FF AA 00 61"), FromHex("FF AA 04 FB"),
                                              FromHex("FF CC 11")};
    if (Next_ < Steps_.size() && StartsWith(frame.Content, Steps_[Next_].Beginning)) {
        auto at = Loop().Time();
        for (const auto& [delay, bytes] : Steps_[Next_].Answers) {
            at += delay;
            Due_.emplace_back(at, bytes);
        }
        std::stable_sort(Due_.begin(), Due_.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        ++Next_;
        return;
    }
    if (std::none_of(goUnheard.begin(), goUnheard.end(),
                     [&](const Bytes& beginning) { return StartsWith(frame.Content, beginning); })) {
        Unexpected_.push_back(ToHex(frame.Content));
    }
}

void Dialogue::LetHappen() {
    while (!Due_.empty() && Due_.front().first <= Loop().Time()) {
        Arrive(Due_.front().second);
        Due_.erase(Due_.begin());
    }
}

}  // namespace burnwick::test
