#include "image/Image.h"

#include <algorithm>
#include <span>
#include <utility>

#include "image/ImageComparison.h"
#include "image/ImageFile.h"
#include "image/ImageReader.h"
#include "image/TypeCodes.h"

namespace burnwick::modBinFileInfo {

namespace {

using Content = std::vector<std::byte>;

constexpr const char* InvalidFormat = "Invalid file format.";

// Fewer bytes than there are when a read fails, which shows in the source.
Content ReadWhole(ImageSource& source) {
    Content content;
    content.reserve(source.Length());
    while (content.size() < source.Length() && !source.HasFailed()) {
        const std::string piece = source.ReadAt(content.size(), ImageSource::ChunkSize);
        const auto bytes = std::as_bytes(std::span(piece));
        content.insert(content.end(), bytes.begin(), bytes.end());
    }
    return content;
}

// An image too long for its content to be kept is read from the file.
BinFileInfo InformationOf(const Image& image, ImageSource& file) {
    BinFileInfo information;
    if (image.Content) {
        ImageSource source(*image.Content);
        information = ReadImage(source);
    } else {
        information = ReadImage(file);
    }
    information.FileName = FileNameOf(image.FileName);
    information.FilePath = FolderOf(image.FileName);
    return information;
}

}  // namespace

std::variant<Image, ImageRefusal> ReadImageFile(const std::string& fileName) {
    ImageFile file(fileName);
    if (!file.Trouble().empty()) {
        return ImageRefusal{InvalidFormat, file.Trouble()};
    }
    return ReadOpenFile(fileName, file.Source());
}

std::variant<Image, ImageRefusal> ReadOpenFile(const std::string& fileName, ImageSource& source) {
    if (!IsImage(source) && !source.HasFailed()) {
        return ImageRefusal{InvalidFormat, ""};
    }
    Image image{.FileName = fileName, .Length = source.Length()};
    if (source.Length() <= LongestImage) {
        image.Content = std::make_shared<const Content>(ReadWhole(source));
    }
    image.Information = InformationOf(image, source);
    if (source.HasFailed()) {
        return ImageRefusal{"File is not supported.", "it cannot be read to its end"};
    }
    return image;
}

bool HasChanged(const Image& image) {
    ImageFile file(image.FileName);
    if (!image.Content || !file.Trouble().empty() || file.Source().Length() != image.Length) {
        return true;
    }
    return ReadWhole(file.Source()) != *image.Content;
}

std::string CompareWithFile(const Image& image, const std::string& fileName, std::int32_t& differences) {
    differences = 0;
    ImageFile file(fileName);
    if (!file.Trouble().empty()) {
        return "Error: " + fileName + ": " + file.Trouble();
    }
    ImageSource source(*image.Content);
    std::string error = CompareSources(source, file.Source(), differences);
    if (file.Source().HasFailed()) {
        differences = 0;
        return "Error: " + fileName + ": it cannot be read to its end";
    }
    return error;
}

}  // namespace burnwick::modBinFileInfo
