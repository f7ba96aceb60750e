#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace simulator {

constexpr std::size_t BlockSize = 256;

enum class MessageKind {
    Bad,       // a header that no message follows, or a wrong check byte
    BadBlock,  // a block message with a wrong check byte
    Probe,
    FlashRequest,
    UploadMode,
    ProgramMode,
    Speed57600,
    Speed115200,
    Identify,
    Block,
    Finish,
};

struct Message {
    MessageKind Kind = MessageKind::Bad;
    unsigned Block = 0;           // a block message's number, 16 bits
    std::vector<std::byte> Data;  // the 256 bytes of a downloaded block
};

// How a block message looks: only the mode of the run tells a request from one that carries data.
enum class BlockForm { Unknown, Request, WithData };

// Finds the host's messages in a stream of bytes: they may come in pieces, and with noise between them.
class Parser {
public:
    void SetBlockForm(BlockForm form) { Form_ = form; }

    void Put(std::byte value) { Buffer_.push_back(value); }

    // The next message that is complete; nothing when more bytes are needed.
    std::optional<Message> Next();

    // Forgets a message that has begun but not ended. False when there was none.
    bool Abandon();

private:
    // What stands at the front of the buffer: how many bytes it fills (0: more are needed to know), and the
    // message that they make, if any.
    struct Reading {
        std::size_t Used = 0;
        std::optional<Message> Found;
    };

    Reading ReadFront() const;
    Reading ReadCommand() const;
    Reading ReadBlock() const;
    Reading ReadFlashRequest() const;

    std::vector<std::byte> Buffer_;
    BlockForm Form_ = BlockForm::Unknown;
};

}  // namespace simulator
