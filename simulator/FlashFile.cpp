#include "simulator/FlashFile.h"

#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "simulator/Parser.h"

namespace simulator {

namespace {

[[noreturn]] void FailFlashFile(const std::filesystem::path& path, const std::string& reason) {
    throw std::runtime_error("flash file " + path.string() + ": " + reason);
}

std::string SystemReason() {
    return std::generic_category().message(errno);
}

}  // namespace

FlashFile::FlashFile(const std::filesystem::path& path, std::size_t size) {
    std::error_code error;
    // Through links to the file itself, which is then what gets replaced.
    Path_ = std::filesystem::weakly_canonical(path, error);
    if (error) {
        Path_ = path;
    }
    if (std::filesystem::exists(Path_, error)) {
        Load();
    } else if (error) {
        FailFlashFile(Path_, error.message());
    } else {
        Replace(std::vector<std::byte>(size, std::byte{0xFF}));
    }
}

void FlashFile::Keep(const std::vector<std::byte>& flash) {
    if (flash != Contents_) {
        Replace(flash);
    }
}

void FlashFile::Load() {
    if (!std::filesystem::is_regular_file(Path_)) {
        FailFlashFile(Path_, "is not a file");
    }
    std::error_code error;
    const auto size = std::filesystem::file_size(Path_, error);
    if (error) {
        FailFlashFile(Path_, error.message());
    }
    if (size == 0 || size % BlockSize != 0) {
        FailFlashFile(Path_,
                      "its " + std::to_string(size) + " bytes are not a whole number of 256-byte blocks");
    }
    Contents_.resize(size);
    std::ifstream file(Path_, std::ios::binary);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): streams know no other bytes
    if (!file.read(reinterpret_cast<char*>(Contents_.data()), static_cast<std::streamsize>(size))) {
        FailFlashFile(Path_, "cannot be read: " + SystemReason());
    }
}

void FlashFile::Replace(const std::vector<std::byte>& flash) {
    auto fresh = Path_;
    fresh += "." + std::to_string(getpid()) + ".tmp";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): streams know no other bytes
    file.write(reinterpret_cast<const char*>(flash.data()), static_cast<std::streamsize>(flash.size()));
    file.close();
    std::error_code error;
    if (!file) {
        const auto reason = SystemReason();
        std::filesystem::remove(fresh, error);
        FailFlashFile(Path_, "cannot be written: " + reason);
    }
    if (const auto old = std::filesystem::status(Path_, error); std::filesystem::is_regular_file(old)) {
        std::filesystem::permissions(fresh, old.permissions(), error);
    }
    std::filesystem::rename(fresh, Path_, error);
    if (error) {
        const auto reason = error.message();
        std::filesystem::remove(fresh, error);
        FailFlashFile(Path_, "cannot be replaced: " + reason);
    }
    Contents_ = flash;
}

}  // namespace simulator
