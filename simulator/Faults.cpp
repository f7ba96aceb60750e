#include "simulator/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace simulator {

namespace {

using namespace std::chrono_literals;

constexpr std::array<std::pair<std::string_view, Fault>, 16> Names = {{
    {"negative-7", Fault::Negative7},
    {"negative-8", Fault::Negative8},
    {"masked", Fault::Mask7},
    {"no-answer", Fault::NoAnswer},
    {"dead", Fault::Dead},
    {"cut-short", Fault::CutShort},
    {"drop", Fault::Drop},
    {"flip", Fault::Flip},
    {"flip-data", Fault::FlipData},
    {"repeat", Fault::Repeat},
    {"noise", Fault::Noise},
    {"pieces", Fault::Pieces},
    {"late", Fault::Late},
    {"too-late", Fault::TooLate},
    {"ready-for-ack", Fault::ReadyForAck},
    {"power-cut", Fault::PowerCut},
}};

constexpr int HighestBlock = 0xFFFF;
constexpr std::size_t CodeAt = 2;
constexpr std::size_t AnswerLength = 4;
constexpr std::byte CodeBit{0x10};  // turns every known code into one that nobody knows
constexpr std::byte DataBit{0x04};
constexpr Time PieceGap = 3ms;

// The host counts silence in ticks of 100 ms whose phase is free: these keep clear of the limit on either
// side.
constexpr Time JustInside = 200ms;
constexpr Time JustBeyond = 250ms;

std::vector<Piece> InPieces(const std::vector<std::byte>& answer) {
    std::vector<Piece> pieces;
    std::size_t length = 1;
    for (std::size_t at = 0; at < answer.size(); length = 3 - length) {
        const auto end = std::min(at + length, answer.size());
        Piece piece;
        piece.After = PieceGap * pieces.size();
        piece.Bytes.assign(answer.begin() + static_cast<std::ptrdiff_t>(at),
                           answer.begin() + static_cast<std::ptrdiff_t>(end));
        pieces.push_back(std::move(piece));
        at = end;
    }
    return pieces;
}

void CutShort(std::vector<std::byte>& answer) {
    const auto dataLength = answer.size() - AnswerLength;
    answer.resize(dataLength == 0 ? AnswerLength - 1 : AnswerLength + dataLength / 2);
}

// An answer without data has its unexamined last byte in their place.
void FlipData(std::vector<std::byte>& answer) {
    const auto dataLength = answer.size() - AnswerLength;
    answer.at(dataLength == 0 ? AnswerLength - 1 : AnswerLength + dataLength / 2) ^= DataBit;
}

void Repeat(std::vector<std::byte>& answer) {
    const auto once = answer;
    answer.insert(answer.end(), once.begin(), once.end());
}

void PrependNoise(std::vector<std::byte>& answer) {
    constexpr std::array noise = {std::byte{0x13}, std::byte{0x00}, std::byte{0x80}, std::byte{0xFF},
                                  std::byte{0x3C}};
    answer.insert(answer.begin(), noise.begin(), noise.end());
}

}  // namespace

std::optional<FaultOrder> ParseFaultOrder(const std::string& text) {
    const auto at = text.find('@');
    const auto name = std::string_view(text).substr(0, at);
    const auto* known =
        std::find_if(Names.begin(), Names.end(), [name](const auto& entry) { return entry.first == name; });
    if (known == Names.end()) {
        return std::nullopt;
    }
    if (at == std::string::npos) {
        return FaultOrder{known->second, std::nullopt};
    }
    const auto number = std::string_view(text).substr(at + 1);
    const auto* const last = number.data() + number.size();
    int block = 0;
    const auto [end, error] = std::from_chars(number.data(), last, block);
    if (error != std::errc() || end != last || block < 0 || block > HighestBlock) {
        return std::nullopt;
    }
    return FaultOrder{known->second, block};
}

std::vector<std::string> FaultNames() {
    std::vector<std::string> names;
    names.reserve(Names.size());
    for (const auto& [name, fault] : Names) {
        names.emplace_back(name);
    }
    return names;
}

std::vector<Piece> Spoilt(std::optional<Fault> fault, std::vector<std::byte> answer) {
    if (fault == Fault::NoAnswer) {
        return {};
    }
    if (fault == Fault::Pieces) {
        return InPieces(answer);
    }
    if (fault == Fault::CutShort) {
        CutShort(answer);
    } else if (fault == Fault::Drop) {
        answer.erase(answer.begin() + static_cast<std::ptrdiff_t>(answer.size() / 2));
    } else if (fault == Fault::Flip) {
        answer.at(CodeAt) ^= CodeBit;
    } else if (fault == Fault::FlipData) {
        FlipData(answer);
    } else if (fault == Fault::Repeat) {
        Repeat(answer);
    } else if (fault == Fault::Noise) {
        PrependNoise(answer);
    }
    std::vector<Piece> whole(1);
    whole.front().Bytes = std::move(answer);
    return whole;
}

std::optional<std::byte> RefusalCode(std::optional<Fault> fault) {
    if (fault == Fault::Negative7) {
        return std::byte{7};
    }
    if (fault == Fault::Negative8) {
        return std::byte{8};
    }
    if (fault == Fault::Mask7) {
        return std::byte{6};
    }
    return std::nullopt;
}

Time AnswerTime(std::optional<Fault> fault, Time arrived, Time asking, Time due, Time limit) {
    if (fault == Fault::Late) {
        return std::max(due, arrived - asking + limit - JustInside);
    }
    if (fault == Fault::TooLate) {
        return std::max(due, arrived + limit + JustBeyond);
    }
    return due;
}

}  // namespace simulator
