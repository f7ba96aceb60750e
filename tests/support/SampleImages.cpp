#include "support/SampleImages.h"

#include <algorithm>
#include <random>

namespace burnwick::test {

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

}  // namespace burnwick::test
