#pragma once

#include <string>
#include <variant>

#include "image/Image.h"

namespace burnwick::test {

// Precondition: the file is an image.
inline Image ImageOf(const std::string& fileName) {
    return std::get<Image>(modBinFileInfo::ReadImageFile(fileName));
}

}  // namespace burnwick::test
