#pragma once

#include "image/Image.h"
#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

// What the image's bytes tell: all fields but the two of its file's name. A failed read shows in the source.
BinFileInfo ReadImage(ImageSource& source);

// ReadImageFile for a file that is open already.
std::variant<Image, ImageRefusal> ReadOpenFile(const std::string& fileName, ImageSource& source);

}  // namespace burnwick::modBinFileInfo
