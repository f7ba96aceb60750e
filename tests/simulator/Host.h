#pragma once

#include <chrono>
#include <cstddef>
#include <numeric>
#include <span>
#include <vector>

#include "simulator/Parser.h"
#include "simulator/Unit.h"
#include "simulator/Wire.h"

namespace simulator {

using Bytes = std::vector<std::byte>;

inline const Bytes Probe = BytesOf(0xFF, 0xAA, 0x00, 0x61);
inline const Bytes Speed57600 = BytesOf(0xFF, 0xAA, 0x02, 0xFD);
inline const Bytes Finish = BytesOf(0xFF, 0xAA, 0x04, 0xFB);
inline const Bytes UploadMode = BytesOf(0xFF, 0xAA, 0x09, 0xF6);
inline const Bytes ProgramMode = BytesOf(0xFF, 0xAA, 0x0A, 0xF5);
inline const Bytes Identify = BytesOf(0xFF, 0xAA, 0x0C, 0xF3);
inline const Bytes Speed115200 = BytesOf(0xFF, 0xAA, 0x12, 0xED);
inline const Bytes FlashRequest = BytesOf(0xFF, 0xCC, 0x11, 0xFE, 0x06, 0x00, 0x10, 0x00, 0x00, 0x00, 0x01,
                                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF);

inline const Bytes Ready = BytesOf(0xFF, 0xAA, 0x05, 0x00);
inline const Bytes Acknowledge = BytesOf(0xFF, 0xAA, 0x06, 0x00);
inline const Bytes Negative7 = BytesOf(0xFF, 0xAA, 0x07, 0x00);
inline const Bytes Negative8 = BytesOf(0xFF, 0xAA, 0x08, 0x00);
inline const Bytes Nothing;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes WithCheck(Bytes message) {
    const auto sum = std::accumulate(
        message.begin() + 2, message.end(), 0U,
        [](unsigned total, std::byte value) { return total + std::to_integer<unsigned>(value); });
    message.push_back(static_cast<std::byte>(sum & 0xFFU));
    return message;
}

inline Bytes BlockRequest(unsigned block) {
    return WithCheck(BytesOf(0xFF, 0xAA, 0x03, block & 0xFFU, block >> 8U));
}

// A block whose 256 bytes are all `fill`.
inline Bytes BlockWithData(unsigned block, int fill) {
    return WithCheck(BytesOf(0xFF, 0xAA, 0x03, block & 0xFFU, block >> 8U)
                     + Bytes(BlockSize, static_cast<std::byte>(fill)));
}

// Speaks to a unit without a line between them, in a time of its own.
class Host {
public:
    static constexpr auto LongEnough = std::chrono::seconds(70);

    explicit Host(UnitOptions options) : Unit_(std::move(options)) {}

    void Say(std::span<const std::byte> bytes) { Unit_.Receive(Now_, Baud, bytes); }

    // Lets time go by until the unit sends something; empty when it has nothing to send for long enough.
    Bytes Hear() { return HearWithin(LongEnough); }

    Bytes HearWithin(Time span) {
        const Time end = Now_ + span;
        for (auto next = Unit_.NextEvent(); next && *next <= end; next = Unit_.NextEvent()) {
            Now_ = std::max(Now_, *next);
            auto bytes = Unit_.Send(Now_, Baud);
            if (!bytes.empty()) {
                return bytes;
            }
        }
        Now_ = end;
        return {};
    }

    // All that the unit sends until it falls quiet, however many pieces it comes in.
    Bytes HearAll() {
        Bytes all;
        for (auto bytes = Hear(); !bytes.empty(); bytes = Hear()) {
            all = std::move(all) + bytes;
        }
        return all;
    }

    Bytes Ask(std::span<const std::byte> bytes) {
        Say(bytes);
        return Hear();
    }

    // Sets the link up at 9600 bit/s; the unit then takes blocks.
    void SetUp(const Bytes& mode) {
        Ask(Probe);
        Ask(mode);
        Hear();
    }

    void Pause(Time span) { Now_ += span; }
    Time Now() const { return Now_; }
    const Unit& Other() const { return Unit_; }
    const UnitJournal& Journal() const { return Unit_.Journal(); }

    unsigned Baud = 9600;

private:
    Unit Unit_;
    Time Now_{};
};

// A unit with so many blocks of memory, each filled with its number.
inline UnitOptions UnitOfBlocks(std::size_t blocks) {
    UnitOptions options;
    for (std::size_t block = 0; block < blocks; ++block) {
        options.Flash.insert(options.Flash.end(), BlockSize, static_cast<std::byte>(block));
    }
    return options;
}

inline Bytes StoredBlock(const Unit& unit, std::size_t block) {
    const auto stored = std::span(unit.Flash()).subspan(block * BlockSize, BlockSize);
    return {stored.begin(), stored.end()};
}

}  // namespace simulator
