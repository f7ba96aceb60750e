#include "image/ImageReader.h"

#include <algorithm>

#include "image/BinaryHeader.h"
#include "image/ImageChecksum.h"
#include "image/ImageType.h"
#include "image/TextFields.h"

namespace burnwick::modBinFileInfo {

namespace {

// Images hold Latin-1, whose characters have the same numbers in Unicode.
std::string Utf8FromLatin1(const std::string& latin1) {
    std::string utf8;
    for (const char character : latin1) {
        const unsigned number = ToByte(character);
        if (number < 0x80) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(0xC0U | number >> 6U);
            utf8 += static_cast<char>(0x80U | (number & 0x3FU));
        }
    }
    return utf8;
}

void ConvertTexts(BinFileInfo& info) {
    for (auto* text : {&info.Version, &info.DateStamp, &info.Model, &info.ImageFileName}) {
        *text = Utf8FromLatin1(*text);
    }
}

}  // namespace

BinFileInfo ReadImage(ImageSource& source) {
    constexpr std::size_t shortDigits = 4;
    BinFileInfo info;
    const auto offset = ReadImageType(source, info);
    info.Checksum = CalcImageChecksum(source, info.ImageKind);
    info.ChecksumShort =
        info.Checksum.substr(info.Checksum.size() - std::min(info.Checksum.size(), shortDigits));
    const SearchBuffer buffer = ReadSearchBuffer(source, info, offset);
    if (info.HasBinaryHeader) {
        ReadBinaryHeader(buffer, info);
    } else {
        TextFields(buffer, source.Length(), info).Read();
    }
    ConvertTexts(info);
    info.FileSize = FormatFileSize(source.Length());
    return info;
}

}  // namespace burnwick::modBinFileInfo
