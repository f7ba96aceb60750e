#pragma once

#include "image/ImageSource.h"
#include "image/modBinFileInfo.h"

namespace burnwick::modBinFileInfo {

// What the image's bytes tell: all fields but the two of its file's name. A failed read shows in the source.
BinFileInfo ReadImage(ImageSource& source);

}  // namespace burnwick::modBinFileInfo
