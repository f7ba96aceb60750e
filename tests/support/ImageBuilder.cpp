#include "support/ImageBuilder.h"

#include <zlib.h>

#include <algorithm>

#include "support/SampleImages.h"

namespace burnwick::test {

ImageBuilder::ImageBuilder(std::size_t size, std::uint32_t seed) : Image_(AnyBytes(size, seed)) {}

ImageBuilder& ImageBuilder::Fill(unsigned value) {
    std::fill(Image_.begin(), Image_.end(), static_cast<std::byte>(value));
    return *this;
}

ImageBuilder& ImageBuilder::Byte(std::size_t at, unsigned value) {
    if (at < Image_.size()) {
        Image_[at] = static_cast<std::byte>(value);
    }
    return *this;
}

ImageBuilder& ImageBuilder::Text(std::size_t at, std::string_view text) {
    for (const char character : text) {
        Byte(at++, static_cast<unsigned char>(character));
    }
    return *this;
}

ImageBuilder& ImageBuilder::TypeCode(std::string_view digits) {
    return Digits(0, digits);
}

ImageBuilder& ImageBuilder::SecondTypeCode(std::string_view digits) {
    constexpr std::size_t at = 0x3000;
    return Digits(at, digits);
}

ImageBuilder& ImageBuilder::Signature(std::size_t at) {
    SignatureAt_ = at;
    return Text(at, "TALLOW ELECTRONICS");
}

ImageBuilder& ImageBuilder::HeaderText(std::string_view text) {
    constexpr std::size_t distance = 19;
    return Text(SignatureAt_ + distance, std::string(text) + "!");
}

ImageBuilder& ImageBuilder::BinaryHeader(std::string_view model, std::string_view dateStamp, unsigned major,
                                         unsigned minor, char letter) {
    constexpr std::size_t textLength = 20;
    const auto padded = [](std::string_view text) {
        std::string field(text.substr(0, textLength));
        field.resize(textLength, '\0');
        return field;
    };
    Byte(12, major).Byte(13, minor).Byte(14, 1);
    return Text(15, padded(model)).Text(35, padded(dateStamp)).Text(75, std::string(1, letter));
}

ImageBuilder& ImageBuilder::OwnLength() {
    constexpr std::size_t at = 4;
    return Number(at, Image_.size());
}

ImageBuilder& ImageBuilder::Crc() {
    constexpr std::size_t crcBytes = 4;
    const auto covered = Image_.size() - std::min(Image_.size(), crcBytes);
    return Number(covered,
                  crc32(0, reinterpret_cast<const Bytef*>(Image_.data()), static_cast<uInt>(covered)));
}

ImageBuilder& ImageBuilder::Digits(std::size_t at, std::string_view digits) {
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        Byte(at++, static_cast<unsigned>(std::stoul(std::string(digits.substr(i, 2)), nullptr, 16)));
    }
    return *this;
}

ImageBuilder& ImageBuilder::Number(std::size_t at, std::size_t number) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        Byte(at++, static_cast<unsigned>(number >> shift & 0xFFU));
    }
    return *this;
}

}  // namespace burnwick::test
