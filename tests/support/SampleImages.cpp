#include "support/SampleImages.h"

#include <algorithm>
#include <random>

#include "engine/FlashMessages.h"
#include "support/ImageBuilder.h"

namespace burnwick::test {

namespace {

constexpr std::size_t NewerImageSize = 1172 * BlockSize;

}  // namespace

Bytes AnyBytes(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::byte>(random()); });
    return bytes;
}

void Put(Bytes& image, std::size_t at, std::initializer_list<unsigned char> marker) {
    for (const unsigned char value : marker) {
        image.at(at++) = std::byte{value};
    }
}

Bytes ImageWith(std::size_t size, std::size_t at, std::initializer_list<unsigned char> marker) {
    Bytes image = AnyBytes(size);
    Put(image, at, marker);
    return image;
}

Bytes SampleImage(std::size_t size) {
    return ImageBuilder(size)
        .TypeCode("C0DE0000")
        .SecondTypeCode("00000000")
        .Signature(0x100)
        .HeaderText("Created:07/22/2004 15:05:09 Version:4.10 Model:VX-1600< Filename:VX16410F.BIN ")
        .Text(0x10000, std::string(4, '\0'))
        .Build();
}

Bytes SampleType4Image() {
    return ImageBuilder(NewerImageSize)
        .TypeCode("C0DE0149")
        .BinaryHeader("VX-3200", "11/05/2009 09:30:00", 2, 7, 'G')
        .OwnLength()
        .Crc()
        .Build();
}

Bytes SampleAnnouncedImage() {
    return ImageBuilder(NewerImageSize)
        .TypeCode("C0DE0157")
        .BinaryHeader("VX-5700", "03/14/2012 16:20:30", 1, 15, 'S')
        .OwnLength()
        .Crc()
        .Build();
}

}  // namespace burnwick::test
