#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "engine/FlashMessages.h"

namespace burnwick::test {

// So many bytes without any pattern that a mistake could hide behind, and without any marker.
Bytes AnyBytes(std::size_t size, std::uint32_t seed = 1);

// AnyBytes with some of them replaced.
Bytes ImageWith(std::size_t size, std::size_t at, std::initializer_list<unsigned char> marker);

void Put(Bytes& image, std::size_t at, std::initializer_list<unsigned char> marker);

}  // namespace burnwick::test
