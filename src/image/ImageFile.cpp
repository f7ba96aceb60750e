#include "image/ImageFile.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <system_error>

#include "platform/files/Utf8Path.h"

namespace burnwick::modBinFileInfo {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t LongestFile = std::numeric_limits<std::int32_t>::max();

// Why a path is not even opened; empty when it may be.
std::string KindTrouble(const fs::path& path) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (error) {
        return error.message();
    }
    if (fs::is_directory(status)) {
        return "it is a folder";
    }
    return fs::is_regular_file(status) ? "" : "it is not a file";
}

std::string SystemTrouble(int number) {
    return number != 0 ? std::generic_category().message(number) : "it cannot be opened";
}

}  // namespace

ImageFile::ImageFile(const std::string& fileName) : Source_(Stream_, Open(fileName)) {}

// Gives the length.
std::uint64_t ImageFile::Open(const std::string& fileName) {
    const fs::path path = Utf8Path(fileName);
    Trouble_ = KindTrouble(path);
    if (!Trouble_.empty()) {
        return 0;
    }
    errno = 0;
    Stream_.open(path, std::ios::binary);
    if (!Stream_) {
        Trouble_ = SystemTrouble(errno);
        return 0;
    }
    const auto end = static_cast<std::streamoff>(Stream_.seekg(0, std::ios::end).tellg());
    if (end < 0) {
        Trouble_ = SystemTrouble(errno);
        return 0;
    }
    if (static_cast<std::uint64_t>(end) > LongestFile) {
        Trouble_ = "it is longer than 2 GB, and no image is";
        return 0;
    }
    return static_cast<std::uint64_t>(end);
}

}  // namespace burnwick::modBinFileInfo
