#include "image/ImageType.h"

#include <algorithm>
#include <string>

#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

constexpr std::uint64_t SecondCopyOffset = 0x3000;
constexpr std::uint64_t SecondPartOffset = 0x10000;
constexpr std::uint64_t HeaderFormatOffset = 14;
constexpr std::size_t SuffixDigits = 4;
constexpr std::size_t BinaryHeaderBytes = 256;

// Missing bytes count as 0.
std::string FourBytesAt(ImageSource& source, std::uint64_t offset) {
    std::string bytes = source.ReadAt(offset, 4);
    bytes.resize(4, '\0');
    return bytes;
}

bool HasHeaderFormat(int kind) {
    return kind == 5 || kind == 8 || kind == 9;
}

void ReadHeaderFormat(ImageSource& source, BinFileInfo& info) {
    if (!HasHeaderFormat(info.ImageKind)) {
        return;
    }
    const std::string format = source.ReadAt(HeaderFormatOffset, 1);
    info.HeaderFormat = format.empty() ? std::uint8_t{0} : ToByte(format.front());
    info.HasBinaryHeader = info.HeaderFormat != 0;
}

// An image whose type code tells no kind. Gives the offset of its texts.
std::uint64_t ReadUnknownKind(ImageSource& source, BinFileInfo& info) {
    const std::string first = FourBytesAt(source, 0);
    const std::string second = FourBytesAt(source, SecondCopyOffset);
    if (first[2] == '\xE1' && (first[3] == '\x22' || first[3] == '\x28')) {
        info.ImageKind = 3;
    }
    if (first[0] != second[0] || first[1] != second[1]) {
        return 0;
    }
    info.ImageFamily = 2;
    if (source.Length() <= SecondPartOffset) {
        return 0;
    }
    info.IsBootCode = false;  // the boot code is only its first part
    return SecondPartOffset;
}

}  // namespace

std::uint64_t ReadImageType(ImageSource& source, BinFileInfo& info) {
    const std::string code = TypeCodeOf(source);
    info.TypeSuffix = code.substr(code.size() - std::min(code.size(), SuffixDigits));
    info.IsBootCode = IsBootTypeCode(code);
    info.ImageKind = KindOfTypeCode(code);
    if (info.ImageKind == 0) {
        return ReadUnknownKind(source, info);
    }
    info.ImageFamily = 2;
    ReadHeaderFormat(source, info);
    return 0;
}

SearchBuffer ReadSearchBuffer(ImageSource& source, const BinFileInfo& info, std::uint64_t offset) {
    return SearchBuffer(
        source.ReadAt(offset, info.HasBinaryHeader ? BinaryHeaderBytes : SearchBuffer::MostBytes));
}

}  // namespace burnwick::modBinFileInfo
