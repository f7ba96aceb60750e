#pragma once

#include <cstdint>
#include <string>

#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

// Of an older kind the sum of all bytes in 32 bits, without leading zeros. From kind 5 on the CRC that the
// image carries, in eight digits; "00000000" when it is not that of the image. Upper-case hexadecimal digits.
std::string CalcImageChecksum(ImageSource& source, int kind);

// zlib's CRC-32 of all bytes but the last four, where an image carries it, its highest byte first.
std::uint32_t CalculateCRC32(ImageSource& source);

}  // namespace burnwick::modBinFileInfo
