#pragma once

#include <sstream>

#include "image/ImageSource.h"
#include "image/modBinFileInfo.h"
#include "support/ImageBuilder.h"
#include "support/SampleImages.h"

namespace burnwick::test {

// An image that needs no file.
class MemoryImage {
public:
    explicit MemoryImage(const Bytes& image);
    MemoryImage(const MemoryImage&) = delete;
    MemoryImage& operator=(const MemoryImage&) = delete;

    modBinFileInfo::ImageSource& Source() { return Source_; }

private:
    std::istringstream Stream_;
    modBinFileInfo::ImageSource Source_;
};

// What an image tells of itself.
modBinFileInfo::BinFileInfo InfoOf(const Bytes& image);
modBinFileInfo::BinFileInfo InfoOf(const ImageBuilder& builder);

}  // namespace burnwick::test
