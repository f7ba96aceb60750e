#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "image/modBinFileInfo.h"

namespace burnwick {

// An image file as it was when it was read: once for a job, and handed on.
struct Image {
    std::string FileName;  // its path (UTF-8)
    std::uint64_t Length = 0;
    // Null for a file that is longer than LongestImage.
    std::shared_ptr<const std::vector<std::byte>> Content{};
    modBinFileInfo::BinFileInfo Information{};
};

namespace modBinFileInfo {

// Bytes of a transfer with the largest block count: 32,767 blocks of 256 bytes.
inline constexpr std::uint64_t LongestImage = 32'767UL * 256;

// Why a file is not taken as an image.
struct ImageRefusal {
    std::string Status;   // "Invalid file format." or "File is not supported."
    std::string Trouble;  // why the file cannot be read, in words for a user; empty when its format is wrong
};

// Reads a whole image.
std::variant<Image, ImageRefusal> ReadImageFile(const std::string& fileName);

// True when the file does not hold the image any more, or cannot be read.
bool HasChanged(const Image& image);

// CompareImages of an image that was read before with a file.
std::string CompareWithFile(const Image& image, const std::string& fileName, std::int32_t& differences);

}  // namespace modBinFileInfo

}  // namespace burnwick
