#include "engine/FlashMessages.h"

#include <algorithm>
#include <initializer_list>
#include <numeric>

namespace burnwick {

namespace {

constexpr std::byte Start{0xFF};
constexpr std::byte Command{0xAA};
constexpr std::byte BlockCommand{0x03};

Bytes BytesOf(std::initializer_list<unsigned char> values) {
    Bytes bytes(values.size());
    std::transform(values.begin(), values.end(), bytes.begin(),
                   [](unsigned char value) { return std::byte{value}; });
    return bytes;
}

Bytes ShortMessage(unsigned char code) {
    return {Start, Command, std::byte{code}, ~std::byte{code}};
}

// The sum of everything behind the pair, modulo 256.
std::byte BlockCheck(const Bytes& message) {
    const auto sum = std::accumulate(
        message.begin() + 2, message.end(), 0U,
        [](unsigned total, std::byte value) { return total + std::to_integer<unsigned>(value); });
    return static_cast<std::byte>(sum);
}

Bytes BlockHeader(std::uint16_t number) {
    return {Start, Command, BlockCommand, static_cast<std::byte>(number),
            static_cast<std::byte>(number >> 8)};
}

}  // namespace

Bytes CommandMessage(MessageKind kind) {
    switch (kind) {
        case MessageKind::Probe:
            // The one message whose check byte is not the complement of its code.
            return {Start, Command, std::byte{0x00}, std::byte{0x61}};
        case MessageKind::VDR_FLASH_REQUEST:
            return BytesOf({0xFF, 0xCC, 0x11, 0xFE, 0x06, 0x00, 0x10, 0x00, 0x00, 0x00, 0x01,
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF});
        case MessageKind::Speed57600:
            return ShortMessage(0x02);
        case MessageKind::Finish:
            return ShortMessage(0x04);
        case MessageKind::UploadMode:
            return ShortMessage(0x09);
        case MessageKind::ProgramMode:
            return ShortMessage(0x0A);
        case MessageKind::Identify:
            return ShortMessage(0x0C);
        case MessageKind::Speed115200:
            return ShortMessage(0x12);
        case MessageKind::Block:
            break;
    }
    return {};
}

Bytes BlockRequestMessage(std::uint16_t number) {
    Bytes message = BlockHeader(number);
    message.push_back(BlockCheck(message));
    return message;
}

Bytes BlockDataMessage(std::uint16_t number, const BlockData& data) {
    Bytes message = BlockHeader(number);
    message.reserve(message.size() + data.size() + 1);
    message.insert(message.end(), data.begin(), data.end());
    message.push_back(BlockCheck(message));
    return message;
}

Answer FindAnswer(std::span<const std::byte> chunk) {
    constexpr std::array pair{Start, Command};
    const auto found = std::search(chunk.begin(), chunk.end(), pair.begin(), pair.end());
    const auto codeAt = static_cast<std::size_t>(found - chunk.begin()) + pair.size();
    if (codeAt >= chunk.size()) {
        return {};
    }
    return {static_cast<AnswerCode>(chunk[codeAt]), codeAt + 2};
}

bool IsFlashRequestAcknowledgement(std::span<const std::byte> chunk) {
    return chunk.size() >= 6 && chunk[0] == std::byte{0x00} && chunk[1] == std::byte{0x10}
           && chunk[4] == std::byte{0x00} && chunk[5] == std::byte{0x01};
}

std::optional<char> FindUnitReplyChar(std::span<const std::byte> chunk) {
    if (chunk.size() > 2) {
        const auto character = static_cast<char>(chunk[2]);
        if (character == '{' || character == '"' || character == 'I') {
            return character;
        }
    }
    return std::nullopt;
}

}  // namespace burnwick
