#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace burnwick {

// A size of the unit's flash chip, and how many blocks an upload reads of it.
struct ChipSize {
    std::string_view Name;
    int Blocks = 0;
};

// By index. The smallest one's 256 blocks, not the 512 that halving would give, are deliberate.
inline constexpr std::array<ChipSize, 4> ChipSizes{{
    {"1Mbit", 256},
    {"2Mbit", 1024},
    {"4Mbit", 2048},
    {"8Mbit", 4096},
}};

// The text of a size's option button, its first character the shortcut key.
std::string ChipCaption(std::size_t index);

// The index for the number with which a stored text begins, after blanks. That of 4 Mbit for a text without
// a number, and for a number that is no index.
std::size_t ChipIndexOf(std::string_view stored);

}  // namespace burnwick
