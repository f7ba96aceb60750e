#pragma once

#include <fstream>
#include <string>

#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

// An image's file, open for reading.
class ImageFile {
public:
    // Opens a regular file of less than 2 GB. Anything else is left alone: it may be endless, or wait for
    // ever.
    explicit ImageFile(const std::string& fileName);

    ImageFile(const ImageFile&) = delete;
    ImageFile& operator=(const ImageFile&) = delete;

    // Why it could not be opened, in words for a user; empty when it is open.
    const std::string& Trouble() const { return Trouble_; }

    // Empty when the file is not open.
    ImageSource& Source() { return Source_; }

private:
    std::uint64_t Open(const std::string& fileName);

    std::ifstream Stream_;
    std::string Trouble_;
    ImageSource Source_;
};

}  // namespace burnwick::modBinFileInfo
