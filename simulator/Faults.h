#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "simulator/Unit.h"

namespace simulator {

// A part of an answer, and how long after the answer's start it leaves.
struct Piece {
    Time After{};
    std::vector<std::byte> Bytes;
};

// The answer as the fault lets it out onto the line; in one piece and whole for a fault that spoils no bytes.
std::vector<Piece> Spoilt(std::optional<Fault> fault, std::vector<std::byte> answer);

// The code byte with which the fault answers in place of an acknowledgement, while the unit refuses what was
// asked; nothing for a fault that is no refusal.
std::optional<std::byte> RefusalCode(std::optional<Fault> fault);

// When an answer leaves that would leave at `due`: Late and TooLate put it near `limit` of the host's
// silence, which began when the host started to send, `asking` before the message had `arrived`.
Time AnswerTime(std::optional<Fault> fault, Time arrived, Time asking, Time due, Time limit);

}  // namespace simulator
