#pragma once

#include <string>
#include <string_view>

#include "image/ImageSource.h"

// The type codes that images begin with.
namespace burnwick::modBinFileInfo {

// A file of exactly this length is an image of the oldest kind, whatever it begins with.
inline constexpr std::uint64_t SmallImage = 65'536;

// Two upper-case hexadecimal digits a byte, in the order of the bytes.
std::string HexDigits(std::string_view bytes);

// The first four bytes of an image as digits; fewer of a shorter one.
std::string TypeCodeOf(ImageSource& source);

bool IsKnownTypeCode(std::string_view code);

// 5, 7, 8 or 9; 0 for a code that tells no kind.
int KindOfTypeCode(std::string_view code);

bool IsBootTypeCode(std::string_view code);

// Whether the file is an image, as far as its length and its type code tell.
bool IsImage(ImageSource& source);

}  // namespace burnwick::modBinFileInfo
