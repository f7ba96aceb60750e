#include "simulator/Parser.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

#include "simulator/Wire.h"

namespace simulator {

namespace {

constexpr std::byte FirstHeaderByte{0xFF};
constexpr std::byte CommandMark{0xAA};
constexpr std::byte FlashRequestMark{0xCC};
constexpr std::byte BlockCode{0x03};

constexpr std::size_t HeaderLength = 2;
constexpr std::size_t NumberEnd = 5;  // a block message's number is its bytes 3 and 4
constexpr std::size_t RequestLength = NumberEnd + 1;
constexpr std::size_t DataMessageLength = NumberEnd + BlockSize + 1;

// From this many right bytes on, a flash request is meant, and a wrong byte makes it a bad one.
constexpr std::size_t FlashRequestRecognised = 4;
constexpr std::array<std::uint8_t, 22> FlashRequestBytes = {0xFF, 0xCC, 0x11, 0xFE, 0x06, 0x00, 0x10, 0x00,
                                                            0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,
                                                            0x00, 0x00, 0x00, 0x00, 0x00, 0xFF};

struct Command {
    std::uint8_t Code;
    std::uint8_t Check;
    MessageKind Kind;
};

// The check byte is the code's complement, except the probe's.
constexpr std::array<Command, 7> Commands = {{
    {0x00, 0x61, MessageKind::Probe},
    {0x02, 0xFD, MessageKind::Speed57600},
    {0x04, 0xFB, MessageKind::Finish},
    {0x09, 0xF6, MessageKind::UploadMode},
    {0x0A, 0xF5, MessageKind::ProgramMode},
    {0x0C, 0xF3, MessageKind::Identify},
    {0x12, 0xED, MessageKind::Speed115200},
}};

Message MessageOf(MessageKind kind) {
    Message message;
    message.Kind = kind;
    return message;
}

}  // namespace

std::optional<Message> Parser::Next() {
    while (!Buffer_.empty()) {
        auto reading = ReadFront();
        if (reading.Used == 0) {
            return std::nullopt;
        }
        Buffer_.erase(Buffer_.begin(), Buffer_.begin() + static_cast<std::ptrdiff_t>(reading.Used));
        if (reading.Found) {
            return std::move(reading.Found);
        }
    }
    return std::nullopt;
}

bool Parser::Abandon() {
    const bool begun = !Buffer_.empty();
    Buffer_.clear();
    return begun;
}

Parser::Reading Parser::ReadFront() const {
    if (Buffer_.front() != FirstHeaderByte) {
        return {1, std::nullopt};
    }
    if (Buffer_.size() < HeaderLength) {
        return {};
    }
    if (Buffer_[1] == CommandMark) {
        return ReadCommand();
    }
    if (Buffer_[1] == FlashRequestMark) {
        return ReadFlashRequest();
    }
    return {1, std::nullopt};
}

Parser::Reading Parser::ReadCommand() const {
    if (Buffer_.size() > HeaderLength && Buffer_[2] == BlockCode && Form_ != BlockForm::Unknown) {
        return ReadBlock();
    }
    if (Buffer_.size() < CommandLength) {
        return {};
    }
    const auto* known = std::find_if(Commands.begin(), Commands.end(), [this](const Command& command) {
        return Buffer_[2] == std::byte{command.Code} && Buffer_[3] == std::byte{command.Check};
    });
    if (known == Commands.end()) {
        // Only the first byte is given up: the real message may begin within the bytes that follow.
        return {1, MessageOf(MessageKind::Bad)};
    }
    return {CommandLength, MessageOf(known->Kind)};
}

Parser::Reading Parser::ReadBlock() const {
    const auto length = Form_ == BlockForm::WithData ? DataMessageLength : RequestLength;
    if (Buffer_.size() < length) {
        return {};
    }
    const auto checkAt = Buffer_.begin() + static_cast<std::ptrdiff_t>(length) - 1;
    const auto sum = std::accumulate(
        Buffer_.begin() + HeaderLength, checkAt, 0U,
        [](unsigned total, std::byte value) { return total + std::to_integer<unsigned>(value); });
    if (static_cast<std::byte>(sum) != *checkAt) {
        // Given up as a whole: image data searched for messages could hold any.
        return {length, MessageOf(MessageKind::BadBlock)};
    }
    Message message = MessageOf(MessageKind::Block);
    message.Block = std::to_integer<unsigned>(Buffer_[3]) | std::to_integer<unsigned>(Buffer_[4]) << 8U;
    message.Data.assign(Buffer_.begin() + NumberEnd, checkAt);
    return {length, std::move(message)};
}

Parser::Reading Parser::ReadFlashRequest() const {
    const auto compared = std::min(Buffer_.size(), FlashRequestBytes.size());
    for (std::size_t i = 0; i < compared; ++i) {
        if (Buffer_[i] != std::byte{FlashRequestBytes.at(i)}) {
            return {1,
                    i < FlashRequestRecognised ? std::nullopt : std::optional(MessageOf(MessageKind::Bad))};
        }
    }
    if (compared < FlashRequestBytes.size()) {
        return {};
    }
    return {compared, MessageOf(MessageKind::FlashRequest)};
}

}  // namespace simulator
