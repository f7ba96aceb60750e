#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "platform/files/Bytes.h"

namespace burnwick::test {

// So many bytes without any pattern that a mistake could hide behind, and without any marker.
Bytes AnyBytes(std::size_t size, std::uint32_t seed = 1);

// AnyBytes with some of them replaced.
Bytes ImageWith(std::size_t size, std::size_t at, std::initializer_list<unsigned char> marker);

void Put(Bytes& image, std::size_t at, std::initializer_list<unsigned char> marker);

// Images as they come from the maker, which tell all about themselves:

// C0DE0000 of any length from 512 bytes, without a mark that the link looks for: model "VX-1600", version
// "4.10", created "07/22/2004 15:05:09", "VX16410F.BIN", English and French. Of exactly 64 KiB it tells
// nothing, as none of that length does.
Bytes SampleImage(std::size_t size = 524'288);

// C0DE0149, for units that call themselves 'I': 1172 blocks with a binary header. Model "VX-3200", version
// "2.07", created "11/05/2009 09:30:00", German; sealed with its CRC.
Bytes SampleType4Image();

// C0DE0157, for units that want the flash request, otherwise like SampleType4Image: model "VX-5700", version
// "1.15", created "03/14/2012 16:20:30", Spanish.
Bytes SampleAnnouncedImage();

}  // namespace burnwick::test
