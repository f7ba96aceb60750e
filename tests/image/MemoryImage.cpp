#include "image/MemoryImage.h"

#include <algorithm>
#include <string>

#include "image/ImageReader.h"

namespace burnwick::test {

namespace {

std::string Characters(const Bytes& image) {
    std::string characters(image.size(), '\0');
    std::transform(image.begin(), image.end(), characters.begin(),
                   [](std::byte value) { return static_cast<char>(value); });
    return characters;
}

}  // namespace

MemoryImage::MemoryImage(const Bytes& image) : Stream_(Characters(image)), Source_(Stream_, image.size()) {}

modBinFileInfo::BinFileInfo InfoOf(const Bytes& image) {
    MemoryImage memory(image);
    return modBinFileInfo::ReadImage(memory.Source());
}

modBinFileInfo::BinFileInfo InfoOf(const ImageBuilder& builder) {
    return InfoOf(builder.Build());
}

}  // namespace burnwick::test
