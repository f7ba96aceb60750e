#pragma once

#include <string>
#include <string_view>

#include "platform/files/Bytes.h"

namespace burnwick::test {

// Bytes from digits: "FF AA 05 00".
Bytes FromHex(std::string_view text);

// Digits from bytes, as FromHex reads them.
std::string ToHex(const Bytes& bytes);

}  // namespace burnwick::test
