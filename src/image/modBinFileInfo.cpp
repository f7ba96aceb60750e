#include "image/modBinFileInfo.h"

#include <utility>

#include "image/ImageComparison.h"
#include "image/ImageFile.h"
#include "image/ImageReader.h"
#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

constexpr const char* Separators = "\\/";

std::string FileError(const std::string& fileName, const std::string& trouble) {
    return "Error: " + fileName + ": " + trouble;
}

}  // namespace

BinFileInfo GetBinFileInfo(const std::string& fileName) {
    BinFileInfo info;
    ImageFile file(fileName);
    if (file.Trouble().empty()) {
        info = ReadImage(file.Source());
        if (file.Source().HasFailed()) {
            info = {};
        }
    }
    info.FileName = FileNameOf(fileName);
    info.FilePath = FolderOf(fileName);
    return info;
}

std::string ReadTrouble(const std::string& fileName) {
    return ImageFile(fileName).Trouble();
}

std::string CheckFileFormat(const std::string& fileName) {
    ImageFile file(fileName);
    return file.Trouble().empty() && IsImage(file.Source()) ? "" : "Invalid file format.";
}

std::string CompareImages(const std::string& fileName1, const std::string& fileName2,
                          std::int32_t& differences, const GoesOnFunction& goesOn, DifferingRanges* ranges) {
    constexpr const char* brokenOff = "it cannot be read to its end";
    differences = 0;
    DifferingRanges found;
    ImageFile file1(fileName1);
    if (!file1.Trouble().empty()) {
        return FileError(fileName1, file1.Trouble());
    }
    ImageFile file2(fileName2);
    if (!file2.Trouble().empty()) {
        return FileError(fileName2, file2.Trouble());
    }
    std::string error = CompareSources(file1.Source(), file2.Source(), differences,
                                       ranges != nullptr ? &found : nullptr, goesOn);
    if (file1.Source().HasFailed() || file2.Source().HasFailed()) {
        differences = 0;
        return FileError(file1.Source().HasFailed() ? fileName1 : fileName2, brokenOff);
    }
    if (error.empty() && ranges != nullptr) {
        *ranges = std::move(found);
    }
    return error;
}

bool IsMismatch(const std::string& compared) {
    return compared.ends_with("mismatched");
}

std::string FileNameOf(const std::string& path) {
    const auto separator = path.find_last_of(Separators);
    return separator != std::string::npos ? path.substr(separator + 1) : path;
}

std::string FolderOf(const std::string& path) {
    const auto separator = path.find_last_of(Separators);
    return separator != std::string::npos ? path.substr(0, separator) : "";
}

std::string FormatFileSize(std::uint64_t bytes) {
    constexpr std::size_t groupLength = 3;
    std::string digits = std::to_string(bytes / 1024);
    if (digits.size() < 2) {
        digits.insert(0, "0");
    }
    for (auto at = digits.size(); at > groupLength;) {
        at -= groupLength;
        digits.insert(at, ",");
    }
    return digits + "KB";
}

}  // namespace burnwick::modBinFileInfo
