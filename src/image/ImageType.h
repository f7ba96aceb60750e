#pragma once

#include <cstdint>

#include "image/ImageSource.h"
#include "image/SearchBuffer.h"
#include "image/modBinFileInfo.h"

namespace burnwick::modBinFileInfo {

// Fills what the type code and the bytes at fixed offsets tell: family, kind, suffix, boot code, header
// format. Gives the offset that the image's texts are read from.
std::uint64_t ReadImageType(ImageSource& source, BinFileInfo& info);

// What the image's texts are looked for in.
SearchBuffer ReadSearchBuffer(ImageSource& source, const BinFileInfo& info, std::uint64_t offset);

}  // namespace burnwick::modBinFileInfo
