#pragma once

#include <string>
#include <string_view>

namespace burnwick {

// Text is UTF-8 inside the program, and UTF-16 where it meets the system. What is no text becomes U+FFFD:
// such a text comes from outside, and must not stop the program.
std::wstring WideText(std::string_view utf8);
std::string NarrowText(std::wstring_view wide);

}  // namespace burnwick
