#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "image/DifferingRanges.h"

// Firmware images as files: what they tell of themselves, whether they are images at all, how two of them
// differ. Paths are UTF-8. No file of any length or content makes a reader fail or read out of bounds.
namespace burnwick::modBinFileInfo {

// What stands in a field that an image does not tell.
inline constexpr const char* NotAvailable = "N/A";

// What an image tells of itself. Texts are UTF-8.
struct BinFileInfo {
    std::string Checksum;       // upper-case hexadecimal digits
    std::string ChecksumShort;  // its last four characters
    std::string Version;        // "4.10"
    std::string Language;       // "English", "English/French" or "N/A"
    std::string DateStamp;
    std::string Model;           // of the unit that the image is for
    std::string FileName;        // the file's, without folder
    std::string ImageFileName;   // the one recorded inside the image
    std::string FilePath;        // the file's folder, without a separator at its end
    std::string FileSize;        // "1,024KB"
    std::int32_t ImageFamily{};  // 2: one of several parts; else 0
    std::int32_t ImageKind{};    // 0, 3, 5, 7, 8 or 9
    std::string TypeSuffix;      // the last four digits of the type code
    bool IsBootCode{};
    bool HasBinaryHeader{};
    std::uint8_t HeaderFormat{};  // of kinds 5, 8 and 9
    std::int16_t SignaturePos{};  // where the maker's name stands in the search buffer; 0: nowhere
};

// Reads an image. Never reports an error: of a file that cannot be read only the names are told.
BinFileInfo GetBinFileInfo(const std::string& fileName);

// Why a file cannot be read as an image's would be, in words for a user ("it is a folder", "Permission
// denied"); empty when it can.
std::string ReadTrouble(const std::string& fileName);

// Empty for an acceptable image, else "Invalid file format.".
std::string CheckFileFormat(const std::string& fileName);

// Called many times during the work on a long file; false ends the work.
using GoesOnFunction = std::function<bool()>;

// Counts the bytes that differ in the ranges that two images of one type are compared in, and tells in
// `ranges` where they are. Gives an empty text when they could be compared, else "Error: File size
// mismatched", "Error: File type mismatched" or, for a file that cannot be read or a comparison that was
// ended, "Error: " and the trouble; then there are no differences, and `ranges` stays as it was.
std::string CompareImages(const std::string& fileName1, const std::string& fileName2,
                          std::int32_t& differences, const GoesOnFunction& goesOn = {},
                          DifferingRanges* ranges = nullptr);

// True for what CompareImages gives of two files that it has read, and that differ in size or type.
bool IsMismatch(const std::string& compared);

// The part behind the last "\" or "/" of a path; all of it without one.
std::string FileNameOf(const std::string& path);

// The part before the last "\" or "/" of a path; empty without one.
std::string FolderOf(const std::string& path);

// Whole KB of 1024 bytes, at least two digits: "00KB", "1,024KB".
std::string FormatFileSize(std::uint64_t bytes);

}  // namespace burnwick::modBinFileInfo
