#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace burnwick {

// What the link knows of an image before it sends a byte of it.
struct ImageInfo {
    int ImageFamily = 0;        // 1, 2, or 0 for an image without any marker
    int ImageType = 0;          // 0, 1, 2, 3, 4 or 343
    std::string ImageTypeText;  // "C0DE0149"
    std::uint8_t ImageModel = 0;
    std::uint8_t ImageSubModel = 0;
    std::string FilesizeHex;  // "FilesizeHex=000493E0"

    friend bool operator==(const ImageInfo&, const ImageInfo&) = default;
};

// An image type whose unit is announced to with the flash request instead of the probe.
inline constexpr int AnnouncedImageType = 343;

// Bytes of an image's beginning that CheckImageType looks at, at most.
inline constexpr std::size_t ImageTypeWindow = 131'073;

// Classifies an image by its length and marker bytes. `beginning` holds its first bytes, up to
// ImageTypeWindow; what lies past its end reads 0.
ImageInfo CheckImageType(std::uint64_t fileSize, std::span<const std::byte> beginning);

// True for an image that may have any length: its last block is padded, and its length is sent in its first
// block.
bool CarriesItsLength(const ImageInfo& image);

// The four bytes that FilesizeHex writes as digits, the highest first; zeros when it is empty.
std::array<std::byte, 4> LengthBytes(const ImageInfo& image);

// True for an image whose unit is never moved to 115200 bit/s.
bool IsLimitedTo57600(const ImageInfo& image);

// True for an image whose unit is asked what it is before it gets the image.
bool NeedsIdentity(const ImageInfo& image, std::uint64_t fileSize);

// Whether the image suits a unit that gave this character (0: none) when asked; true where no question is
// needed.
bool SuitsUnit(const ImageInfo& image, std::uint64_t fileSize, char unitReplyChar);

}  // namespace burnwick
