#include "image/BinaryHeader.h"

#include "image/Languages.h"

namespace burnwick::modBinFileInfo {

namespace {

constexpr std::uint8_t KnownFormat = 1;
constexpr std::size_t VersionAt = 12;
constexpr std::size_t ModelAt = 15;
constexpr std::size_t DateStampAt = 35;
constexpr std::size_t LanguageAt = 75;
constexpr std::size_t TextLength = 20;

}  // namespace

void ReadBinaryHeader(const SearchBuffer& buffer, BinFileInfo& info) {
    // No maker's name is looked for, and so nothing that stands at its side is found.
    info.ImageFileName = NotAvailable;
    if (info.HeaderFormat != KnownFormat) {
        return;
    }
    info.Model = buffer.TextUntil('\0', ModelAt, TextLength);
    info.DateStamp = buffer.TextUntil('\0', DateStampAt, TextLength);
    info.Version = VersionFromBytes(buffer, VersionAt);
    info.Language = LanguageFromLetter(static_cast<char>(buffer.ByteAt(LanguageAt)));
}

std::string VersionFromBytes(const SearchBuffer& buffer, std::size_t at) {
    const auto minor = std::to_string(buffer.ByteAt(at + 1));
    return std::to_string(buffer.ByteAt(at)) + (minor.size() < 2 ? ".0" : ".") + minor;
}

}  // namespace burnwick::modBinFileInfo
