#include "engine/FlashMessages.h"
#include "fuzz/Input.h"

// Any chunk of bytes, read as an answer of the unit.

namespace {

using burnwick::Bytes;
using burnwick::test::Input;
using burnwick::test::Require;

// Where the first FF AA stands; the chunk's length when nowhere.
std::size_t PairAt(const Bytes& chunk) {
    for (std::size_t i = 0; i + 1 < chunk.size(); ++i) {
        if (chunk[i] == std::byte{0xFF} && chunk[i + 1] == std::byte{0xAA}) {
            return i;
        }
    }
    return chunk.size();
}

void CheckAnswer(const Bytes& chunk) {
    const auto answer = burnwick::FindAnswer(chunk);
    const auto pairAt = PairAt(chunk);
    if (pairAt + 2 >= chunk.size()) {
        Require(answer.Code == burnwick::AnswerCode::None, "no code without a pair and a byte behind it");
        return;
    }
    Require(static_cast<int>(answer.Code) == std::to_integer<int>(chunk[pairAt + 2]),
            "the code is the byte behind the first pair");
    Require(answer.DataAt == pairAt + 4, "the data begin four bytes behind the pair's start");
}

void CheckAcknowledgement(const Bytes& chunk) {
    const bool isOne = chunk.size() > 5 && chunk[0] == std::byte{0} && chunk[1] == std::byte{0x10}
                       && chunk[4] == std::byte{0} && chunk[5] == std::byte{1};
    Require(burnwick::IsFlashRequestAcknowledgement(chunk) == isOne,
            "00 10 .. .. 00 01 is an acknowledgement");
}

void CheckReplyChar(const Bytes& chunk) {
    const auto character = burnwick::FindUnitReplyChar(chunk);
    const auto third = chunk.size() > 2 ? static_cast<char>(chunk[2]) : '\0';
    const bool isOne = third == '{' || third == '"' || third == 'I';
    Require(character.has_value() == isOne, "three characters are identities");
    Require(!character || *character == third, "the identity is the third byte");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes chunk = Input(data, size).TakeRest();
    CheckAnswer(chunk);
    CheckAcknowledgement(chunk);
    CheckReplyChar(chunk);
    return 0;
}
