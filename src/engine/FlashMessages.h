#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/files/Bytes.h"

// The frames of the wire as values: what the program sends, and what it reads out of an answer.
namespace burnwick {

// The unit of transfer.
inline constexpr std::size_t BlockSize = 256;
using BlockData = std::array<std::byte, BlockSize>;

enum class MessageKind : int {
    Speed57600 = 2,
    Block = 3,
    Finish = 4,
    UploadMode = 9,
    ProgramMode = 10,
    Probe = 11,
    Identify = 12,
    Speed115200 = 18,
    VDR_FLASH_REQUEST = 343,
};

enum class AnswerCode : int {
    None = 0,
    Ready = 5,
    Acknowledge = 6,
    Negative = 7,
    NegativeToo = 8,
};

// The whole message of a kind that carries nothing but itself; empty for Block and for any kind not listed.
Bytes CommandMessage(MessageKind kind);

// Asks for a block of the unit's flash: 6 bytes.
Bytes BlockRequestMessage(std::uint16_t number);

// Carries a block to the unit: 262 bytes.
Bytes BlockDataMessage(std::uint16_t number, const BlockData& data);

// What the pair FF AA leads to in a chunk of input.
struct Answer {
    AnswerCode Code = AnswerCode::None;  // any code of the unit's, listed or not; None when there is no pair
    std::size_t DataAt = 0;              // index of an upload's first data byte; may lie past the chunk's end
};

// A pair at the very end, with no code behind it, counts as no pair.
Answer FindAnswer(std::span<const std::byte> chunk);

// True for the unit's acknowledgement of the flash request: 00 10 .. .. 00 01.
bool IsFlashRequestAcknowledgement(std::span<const std::byte> chunk);

// '{', '"' or 'I' at index 2 of the chunk: the unit's answer to what it is. Nothing for any other character.
std::optional<char> FindUnitReplyChar(std::span<const std::byte> chunk);

}  // namespace burnwick
