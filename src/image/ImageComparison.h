#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "image/DifferingRanges.h"
#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

// Counts the bytes that differ in the ranges that two images of one type are compared in, and tells where
// they are when somebody asks. Gives an empty text, or an error's. A failed read shows in its source.
// `goesOn` is called many times; once it gives false, the comparison ends with an error.
std::string CompareSources(ImageSource& source1, ImageSource& source2, std::int32_t& differences,
                           DifferingRanges* ranges = nullptr, const std::function<bool()>& goesOn = {});

}  // namespace burnwick::modBinFileInfo
