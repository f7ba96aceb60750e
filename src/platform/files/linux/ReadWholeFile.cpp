#include "platform/files/ReadWholeFile.h"

#include <array>
#include <fstream>
#include <utility>

namespace burnwick {

namespace fs = std::filesystem;

std::optional<std::string> ReadWholeFile(const fs::path& path) {
    std::error_code error;
    const auto type = fs::status(path, error).type();
    if (type == fs::file_type::not_found) {
        return "";
    }
    // Opening a pipe in the file's place would wait for ever.
    if (type != fs::file_type::regular) {
        return std::nullopt;
    }
    constexpr std::size_t chunkSize = 65'536;
    std::array<char, chunkSize> chunk{};
    std::string text;
    std::ifstream file(path, std::ios::binary);
    while (file) {
        file.read(chunk.data(), chunk.size());
        text.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
    }
    return file.is_open() && file.eof() && !file.bad() ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace burnwick
