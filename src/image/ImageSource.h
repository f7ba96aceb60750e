#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <span>
#include <string>

namespace burnwick::modBinFileInfo {

// The bytes of an image, read piece by piece. They are held as the characters of a text, since that is what
// most of them are searched as.
class ImageSource {
public:
    // What is read at once of a long range, at most.
    static constexpr std::size_t ChunkSize = 65'536;

    // `length` is the image's; the stream stays the caller's.
    ImageSource(std::istream& stream, std::uint64_t length) : Stream_(&stream), Length_(length) {}
    // The bytes of an image that was read before; they stay the caller's.
    explicit ImageSource(std::span<const std::byte> bytes) : Bytes_(bytes), Length_(bytes.size()) {}

    std::uint64_t Length() const { return Length_; }

    // As many of so many bytes as there are behind an offset, ChunkSize at most.
    std::string ReadAt(std::uint64_t offset, std::size_t count);

    // True when a read failed, or found the image shorter than its length.
    bool HasFailed() const { return HasFailed_; }

private:
    std::istream* Stream_ = nullptr;  // without one, the bytes are read
    std::span<const std::byte> Bytes_;
    std::uint64_t Length_;
    bool HasFailed_ = false;
};

// A character of an image as the byte that it was.
inline std::uint8_t ToByte(char character) {
    return static_cast<std::uint8_t>(character);
}

}  // namespace burnwick::modBinFileInfo
