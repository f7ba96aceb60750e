#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files/Bytes.h"

namespace burnwick::test {

// Sizes that images have, in bytes.
inline constexpr std::size_t KiB64 = 65'536;
inline constexpr std::size_t KiB128 = 131'072;
inline constexpr std::size_t KiB256 = 262'144;
inline constexpr std::size_t KiB512 = 524'288;
inline constexpr std::size_t MiB = 1'048'576;

// Makes an image field by field. It begins as AnyBytes. What would lie past its end is left out, so that an
// image may be cut anywhere.
class ImageBuilder {
public:
    explicit ImageBuilder(std::size_t size, std::uint32_t seed = 1);

    // Gives every byte the same value.
    ImageBuilder& Fill(unsigned value);
    ImageBuilder& Byte(std::size_t at, unsigned value);
    ImageBuilder& Text(std::size_t at, std::string_view text);

    // Hexadecimal digits, two a byte.
    ImageBuilder& TypeCode(std::string_view digits);
    // Where images of several parts repeat the beginning of their type code.
    ImageBuilder& SecondTypeCode(std::string_view digits);

    // The maker's name.
    ImageBuilder& Signature(std::size_t at);
    // What stands behind it, and the "!" that ends it.
    ImageBuilder& HeaderText(std::string_view text);

    // The header of the newer kinds, in its format 1. The texts have up to 20 characters.
    ImageBuilder& BinaryHeader(std::string_view model, std::string_view dateStamp, unsigned major,
                               unsigned minor, char letter);
    // The image's length where the newer kinds carry it, its highest byte first.
    ImageBuilder& OwnLength();
    // The CRC in the last four bytes. It covers what is there by now: the last thing to do.
    ImageBuilder& Crc();

    Bytes Build() const { return Image_; }

private:
    ImageBuilder& Digits(std::size_t at, std::string_view digits);
    ImageBuilder& Number(std::size_t at, std::size_t number);

    Bytes Image_;
    std::size_t SignatureAt_ = 0;
};

}  // namespace burnwick::test
