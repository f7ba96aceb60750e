#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#include "fuzz/Input.h"
#include "fuzz/SparseImage.h"
#include "image/ImageReader.h"
#include "image/TypeCodes.h"

// What an image of any length and content tells of itself, and whether it is one.

namespace {

using burnwick::Bytes;
using burnwick::modBinFileInfo::BinFileInfo;
using burnwick::modBinFileInfo::ImageSource;
using burnwick::test::Require;

constexpr std::size_t SmallImage = 65'536;

std::string Characters(const Bytes& image) {
    return {reinterpret_cast<const char*>(image.data()), image.size()};
}

// Characters of a text in UTF-8 as the readers make it, none above U+00FF.
std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++at, ++count) {
        const auto value = static_cast<unsigned char>(text[at]);
        if (value >= 0x80) {
            Require(value == 0xC2 || value == 0xC3, "a text is UTF-8 of Latin-1");
            Require(++at < text.size(), "no character is cut");
            Require((static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80, "its second byte follows");
        }
    }
    return count;
}

bool IsHexadecimal(std::string_view text) {
    return text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

void CheckTexts(const BinFileInfo& info) {
    Require(CountCharacters(info.Version) <= 7, "a version has 7 characters at most");
    Require(CountCharacters(info.DateStamp) <= 24, "a date has 24 characters at most");
    Require(CountCharacters(info.Model) <= 51, "a model has 51 characters at most");
    Require(CountCharacters(info.ImageFileName) <= 101, "a file name is part of a header text");
    Require(info.FileSize.ends_with("KB"), "a size is in KB");
    Require(info.FileName.empty() && info.FilePath.empty(), "the bytes tell nothing of their file");
}

void CheckLanguage(const BinFileInfo& info) {
    constexpr std::array<std::string_view, 11> languages{"Danish", "Dutch",   "Finnish", "French",
                                                         "German", "Italian", "Polish",  "Russian",
                                                         "Slovak", "Spanish", "English"};
    std::string_view language = info.Language;
    if (language.starts_with("English/")) {
        Require(info.ImageFamily == 0, "two languages are told outside family 2 only");
        language.remove_prefix(8);
        Require(language != "English", "the second language is another one");
    }
    const bool isOtherFormat = info.HasBinaryHeader && info.HeaderFormat != 1;
    Require(isOtherFormat == language.empty(), "only an unknown header leaves the language empty");
    Require(language.empty() || language == "N/A"
                || std::find(languages.begin(), languages.end(), language) != languages.end(),
            "the language is known");
}

void CheckType(const BinFileInfo& info) {
    const auto kind = info.ImageKind;
    Require(kind == 0 || kind == 3 || kind == 5 || kind >= 7, "the kind is known");
    Require(kind <= 9, "no kind is above 9");
    Require(info.ImageFamily == 2 || (info.ImageFamily == 0 && kind < 5), "kinds from 5 on are of family 2");
    Require(!info.HasBinaryHeader || kind == 5 || kind >= 8, "older kinds have no binary header");
    Require(info.HasBinaryHeader == (info.HeaderFormat != 0), "a header has a format");
    Require(info.TypeSuffix.size() <= 4 && IsHexadecimal(info.TypeSuffix), "the suffix is digits");
}

void CheckChecksum(const BinFileInfo& info) {
    Require(!info.Checksum.empty() && info.Checksum.size() <= 8, "a checksum has 8 digits at most");
    Require(IsHexadecimal(info.Checksum), "a checksum is digits");
    Require(info.ImageKind < 5 || info.Checksum.size() == 8, "a CRC has eight");
    Require(info.Checksum.ends_with(info.ChecksumShort), "the short one is its end");
    Require(info.ChecksumShort.size() == std::min<std::size_t>(4, info.Checksum.size()),
            "and has four digits");
}

void CheckSignature(const BinFileInfo& info, const std::string& image) {
    const auto at = static_cast<std::size_t>(info.SignaturePos);
    Require(info.SignaturePos >= 0 && at < 32'767, "the signature lies in the buffer");
    if (at == 0) {
        Require(info.ImageFileName == "N/A", "no file name without signature");
        return;
    }
    Require(image.size() != SmallImage && !info.HasBinaryHeader, "a signature was looked for");
    const std::string_view signature = "TALLOW ELECTRONICS";
    Require(image.compare(at, signature.size(), signature) == 0
                || (info.ImageFamily == 2 && image.size() > SmallImage
                    && image.compare(SmallImage + at, signature.size(), signature) == 0),
            "the signature stands where it is said to");
}

void CheckAcceptance(ImageSource& source, const BinFileInfo& info) {
    const bool isImage = burnwick::modBinFileInfo::IsImage(source);
    Require(isImage || source.Length() != SmallImage, "any 64 KiB are an image");
    Require(isImage || info.ImageKind < 5, "an image of a newer kind is one");
    Require(!isImage || source.Length() >= 4, "an image has a type code");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    burnwick::test::Input input(data, size);
    const std::string image = Characters(burnwick::test::TakeSparseImage(input));
    std::istringstream stream(image);
    ImageSource source(stream, image.size());
    const BinFileInfo info = burnwick::modBinFileInfo::ReadImage(source);
    CheckType(info);
    CheckChecksum(info);
    CheckTexts(info);
    CheckLanguage(info);
    CheckSignature(info, image);
    CheckAcceptance(source, info);
    if (image.size() == SmallImage && !info.HasBinaryHeader) {
        Require(info.DateStamp == "N/A" && info.Language == "N/A", "64 KiB tell neither date nor language");
    }
    Require(!source.HasFailed(), "all was read");
    return 0;
}
