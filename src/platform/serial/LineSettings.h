#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

// The settings of a serial line, as the text "57600,N,8,1" gives them.
struct LineSettings {
    unsigned Baud = 9600;   // bit/s
    char Parity = 'N';      // 'N', 'E' or 'O'
    unsigned DataBits = 8;  // 5 to 8
    unsigned StopBits = 1;  // 1 or 2

    friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

// Nothing when the text is not "speed,parity,data bits,stop bits" with values that a line can have.
std::optional<LineSettings> ParseLineSettings(std::string_view text);

// How long the line needs for one character, its start bit included.
std::chrono::nanoseconds CharacterTime(const LineSettings& settings);

// "57600,N,8,1".
std::string ToText(const LineSettings& settings);

}  // namespace burnwick
