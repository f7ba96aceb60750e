#include "engine/ImageInfo.h"

#include <cstdio>

namespace burnwick {

namespace {

constexpr std::uint64_t LargestFamily1Boot = 0x10000;    // 64 KiB: taken for family 1 unseen
constexpr std::uint64_t Family1WithIdentity = 0x100000;  // 1 MiB
constexpr std::uint8_t FirstSubModelWithQuote = 30;

std::uint8_t ByteAt(std::span<const std::byte> bytes, std::size_t at) {
    return at < bytes.size() ? std::to_integer<std::uint8_t>(bytes[at]) : 0;
}

// Eight upper-case hexadecimal digits.
std::string EightHexDigits(std::uint32_t value) {
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08X", static_cast<unsigned>(value));
    return text.data();
}

// The four bytes at an offset, the first in the highest place.
std::uint32_t MarkerAt(std::span<const std::byte> bytes, std::size_t at) {
    std::uint32_t marker = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        marker = marker << 8 | ByteAt(bytes, i);
    }
    return marker;
}

int TypeOfFirstMarker(std::uint32_t marker) {
    switch (marker) {
        case 0xC0DE0149:
        case 0xBC0DE149:
            return 4;
        case 0xC0DE0157:
        case 0xBC0DE157:
            return AnnouncedImageType;
        default:
            return 0;
    }
}

// The older images: each marker that is found overwrites what an earlier one said.
ImageInfo ClassifyByMarkers(std::span<const std::byte> bytes) {
    ImageInfo image;
    if (MarkerAt(bytes, 0x10000) == 0x02009E02) {
        image.ImageFamily = 1;
        image.ImageType = 1;
        image.ImageModel = 1;
    }
    if (MarkerAt(bytes, 0x10000) == 0xC0DE0002) {
        image.ImageFamily = 2;
    }
    if (MarkerAt(bytes, 0) == 0xBC0DE122) {
        image.ImageTypeText = "BC0DE122";
        image.ImageType = 3;
        image.ImageModel = ByteAt(bytes, 73'600);
        image.ImageSubModel = ByteAt(bytes, 73'601);
    }
    if (MarkerAt(bytes, 0x3000) == 0xC0DE0001) {
        image.ImageTypeText = "C0DE0001";
        image.ImageType = 2;
        image.ImageModel = 2;
    }
    if (MarkerAt(bytes, 0x3000) == 0xBC0DE118) {
        image.ImageTypeText = "BC0DE118";
        image.ImageType = 2;
        image.ImageModel = 3;
    }
    return image;
}

}  // namespace

ImageInfo CheckImageType(std::uint64_t fileSize, std::span<const std::byte> beginning) {
    ImageInfo image;
    if (fileSize <= LargestFamily1Boot) {
        image.ImageFamily = 1;
        image.ImageType = 1;
        return image;
    }
    const std::uint32_t marker = MarkerAt(beginning, 0);
    const int type = TypeOfFirstMarker(marker);
    if (type == 0) {
        return ClassifyByMarkers(beginning);
    }
    image.ImageFamily = 2;
    image.ImageType = type;
    image.ImageTypeText = EightHexDigits(marker);
    image.ImageModel = ByteAt(beginning, 12);
    image.ImageSubModel = ByteAt(beginning, 13);
    image.FilesizeHex = "FilesizeHex=" + EightHexDigits(static_cast<std::uint32_t>(fileSize));
    return image;
}

bool CarriesItsLength(const ImageInfo& image) {
    return image.ImageType == 4 || image.ImageType == AnnouncedImageType;
}

std::array<std::byte, 4> LengthBytes(const ImageInfo& image) {
    constexpr std::size_t firstDigit = 12;
    std::array<std::byte, 4> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto at = firstDigit + 2 * i;
        if (at + 2 <= image.FilesizeHex.size()) {
            bytes.at(i) = static_cast<std::byte>(std::stoul(image.FilesizeHex.substr(at, 2), nullptr, 16));
        }
    }
    return bytes;
}

bool IsLimitedTo57600(const ImageInfo& image) {
    return image.ImageFamily == 1 || image.ImageType == 2;
}

bool NeedsIdentity(const ImageInfo& image, std::uint64_t fileSize) {
    return (image.ImageFamily == 1 && fileSize == Family1WithIdentity)
           || (image.ImageFamily == 2 && (image.ImageType == 3 || image.ImageType == 4));
}

bool SuitsUnit(const ImageInfo& image, std::uint64_t fileSize, char unitReplyChar) {
    if (!NeedsIdentity(image, fileSize)) {
        return true;
    }
    if (image.ImageFamily == 1) {
        return unitReplyChar == '{';
    }
    if (image.ImageType == 4) {
        return unitReplyChar == 'I';
    }
    return (image.ImageSubModel >= FirstSubModelWithQuote) == (unitReplyChar == '"');
}

}  // namespace burnwick
