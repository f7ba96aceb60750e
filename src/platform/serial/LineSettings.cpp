#include "platform/serial/LineSettings.h"

#include <algorithm>
#include <charconv>

namespace burnwick {

namespace {

// The text before the next comma, taken off the front of `text` together with that comma.
std::string_view NextField(std::string_view& text) {
    const auto comma = text.find(',');
    const auto field = text.substr(0, comma);
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    return field;
}

std::optional<unsigned> ParseNumber(std::string_view text, unsigned lowest, unsigned highest) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < lowest || value > highest) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

std::optional<LineSettings> ParseLineSettings(std::string_view text) {
    constexpr auto commas = 3;
    constexpr unsigned fastest = 4'000'000;  // bit/s; beyond any adapter on sale
    const bool wrongCount = std::count(text.begin(), text.end(), ',') != commas;
    const auto baud = ParseNumber(NextField(text), 1, fastest);
    const auto parity = NextField(text);
    const auto dataBits = ParseNumber(NextField(text), 5, 8);
    const auto stopBits = ParseNumber(NextField(text), 1, 2);
    const bool parityKnown = parity == "N" || parity == "E" || parity == "O";
    if (wrongCount || !baud || !parityKnown || !dataBits || !stopBits) {
        return std::nullopt;
    }
    return LineSettings{*baud, parity.front(), *dataBits, *stopBits};
}

std::chrono::nanoseconds CharacterTime(const LineSettings& settings) {
    const auto bits = 1 + settings.DataBits + (settings.Parity == 'N' ? 0 : 1) + settings.StopBits;
    return std::chrono::nanoseconds(std::chrono::seconds(bits)) / settings.Baud;
}

std::string ToText(const LineSettings& settings) {
    return std::to_string(settings.Baud) + "," + settings.Parity + "," + std::to_string(settings.DataBits)
           + "," + std::to_string(settings.StopBits);
}

}  // namespace burnwick
