#include <array>

#include "engine/ImageInfo.h"
#include "fuzz/Input.h"
#include "platform/files/Bytes.h"

// An image of any length and content, classified before it is sent.

namespace {

using burnwick::Bytes;
using burnwick::ImageInfo;
using burnwick::test::Input;
using burnwick::test::Require;

constexpr std::uint64_t LargestUnseen = 0x10000;

// As much of the window as the input says, with bytes put where it says: markers far from the start stay in
// reach of a short input.
Bytes TakeBeginning(Input& input) {
    constexpr std::array<std::size_t, 4> markedPlaces{0, 0x3000, 0x10000, 73'600};
    Bytes beginning(input.TakeNumber(3) % (burnwick::ImageTypeWindow + 1));
    while (!input.IsEmpty() && !beginning.empty()) {
        const auto choice = input.TakeByte();
        const auto place = choice < markedPlaces.size() ? markedPlaces.at(choice)
                                                        : static_cast<std::size_t>(input.TakeNumber(3));
        auto at = place % beginning.size();
        for (const std::byte value : input.TakeBytes(4)) {
            if (at < beginning.size()) {
                beginning[at++] = value;
            }
        }
    }
    return beginning;
}

void CheckClass(const ImageInfo& image, std::uint64_t fileSize) {
    Require(image.ImageFamily >= 0 && image.ImageFamily <= 2, "the family is known");
    Require((image.ImageType >= 0 && image.ImageType <= 4) || image.ImageType == burnwick::AnnouncedImageType,
            "the type is known");
    Require(image.ImageTypeText.empty() || image.ImageTypeText.size() == 8, "a marker has eight digits");
    if (fileSize <= LargestUnseen) {
        Require(image.ImageFamily == 1 && image.ImageType == 1, "a small image is of family 1");
    }
}

void CheckLength(const ImageInfo& image, std::uint64_t fileSize) {
    constexpr std::size_t lengthOfText = 20;
    const bool carries = burnwick::CarriesItsLength(image);
    Require(carries == (image.ImageType == 4 || image.ImageType == burnwick::AnnouncedImageType),
            "types 4 and 343 carry their length");
    Require(image.FilesizeHex.size() == (carries ? lengthOfText : 0), "only they have it as text");
    const auto sent = static_cast<std::uint32_t>(carries ? fileSize : 0);
    const auto bytes = burnwick::LengthBytes(image);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        Require(bytes.at(i) == static_cast<std::byte>(sent >> (24 - 8 * i)),
                "the length is sent high byte first");
    }
    Require(!(carries && burnwick::IsLimitedTo57600(image)), "they are never limited in speed");
}

void CheckIdentity(const ImageInfo& image, std::uint64_t fileSize) {
    const bool needed = burnwick::NeedsIdentity(image, fileSize);
    Require(!needed || fileSize > LargestUnseen, "a small image suits every unit");
    int suited = 0;
    for (int character = 0; character < 256; ++character) {
        suited += burnwick::SuitsUnit(image, fileSize, static_cast<char>(character)) ? 1 : 0;
    }
    const bool isOneOrAllButOne = suited == 1 || suited == 255;
    Require(needed ? isOneOrAllButOne : suited == 256, "an image suits one unit, all others, or all");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint64_t fileSize = input.TakeNumber(input.TakeByte() % 9);
    const Bytes beginning = TakeBeginning(input);
    const ImageInfo image = burnwick::CheckImageType(fileSize, beginning);
    CheckClass(image, fileSize);
    CheckLength(image, fileSize);
    CheckIdentity(image, fileSize);
    return 0;
}
