#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "support/TempFolder.h"

namespace burnwick::test {

// A folder of one test's own, in whose name are blanks and letters of several scripts.
class ForeignFolder {
public:
    ForeignFolder() { std::filesystem::create_directory(Path_); }

    const std::filesystem::path& Path() const { return Path_; }

    std::ptrdiff_t FilesThere() const {
        return std::distance(std::filesystem::directory_iterator(Path_),
                             std::filesystem::directory_iterator());
    }

private:
    TempFolder Folder_;
    std::filesystem::path Path_ = Folder_.Path() / u8"Ger\u00E4t \u0417\u0430\u043F\u0438\u0441\u044C \u6771";
};

inline void Put(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

inline std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace burnwick::test
