#include "settings/ChipSize.h"

#include <algorithm>
#include <charconv>

namespace burnwick {

namespace {

constexpr std::size_t FourMegabit = 2;

}  // namespace

std::string ChipCaption(std::size_t index) {
    return "&" + std::string(ChipSizes.at(index).Name);
}

std::size_t ChipIndexOf(std::string_view stored) {
    stored.remove_prefix(std::min(stored.find_first_not_of(" \t"), stored.size()));
    std::size_t index = 0;
    const auto [end, error] = std::from_chars(stored.data(), stored.data() + stored.size(), index);
    return error == std::errc() && index < ChipSizes.size() ? index : FourMegabit;
}

}  // namespace burnwick
