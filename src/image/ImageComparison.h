#pragma once

#include <cstdint>
#include <string>

#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

// Counts the bytes that differ in the ranges that two images of one type are compared in. Gives an empty
// text, or an error's. A failed read shows in its source.
std::string CompareSources(ImageSource& source1, ImageSource& source2, std::int32_t& differences);

}  // namespace burnwick::modBinFileInfo
