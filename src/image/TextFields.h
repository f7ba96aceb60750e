#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "image/SearchBuffer.h"
#include "image/modBinFileInfo.h"

namespace burnwick::modBinFileInfo {

// The fields of an image without a binary header: found by marker texts, or by their place.
class TextFields {
public:
    // Buffer and record stay the caller's; the record's type fields are known. `length` is the image's.
    TextFields(const SearchBuffer& buffer, std::uint64_t length, BinFileInfo& info)
        : Buffer_(buffer), Length_(length), Info_(info) {}

    // Fills date stamp, version, image file name, language, model and the signature's position. Texts are as
    // the image has them, in Latin-1.
    void Read();

private:
    bool IsSmallImage() const;
    // Behind the maker's name; 0 without one, which is no place for anything.
    std::size_t BehindSignature(std::size_t distance) const;
    // Looks for the text of fields that many images have behind the maker's name.
    bool HasCreatedHeader();
    // Up to so many characters behind a marker of the header text; "N/A" without the marker.
    std::string HeaderField(std::string_view marker, std::size_t most) const;

    std::string GetDateStamp();
    std::string GetVersion();
    std::string SearchedVersion() const;
    std::string VersionBehindSignature() const;
    std::string GetImageFileName();
    std::string HeaderFileName() const;
    std::string GetLanguage();
    std::string LetterOfFileName() const;
    std::string SearchedLanguage() const;
    std::string GetModel();
    std::string HeaderModel() const;
    std::size_t ModelPosition() const;

    const SearchBuffer& Buffer_;
    std::uint64_t Length_;
    BinFileInfo& Info_;
    std::string HeaderText_;
};

}  // namespace burnwick::modBinFileInfo
