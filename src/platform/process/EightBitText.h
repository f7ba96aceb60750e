#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

// Text in the system's own 8-bit characters, as programs that know no Unicode write it, as UTF-8. Nothing on
// a system that has no such characters beside UTF-8.
std::optional<std::string> FromEightBit(std::string_view text);

}  // namespace burnwick
