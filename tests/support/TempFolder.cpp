#include "support/TempFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace burnwick::test {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::random_device random;
    do {
        Path_ = fs::temp_directory_path() / ("burnwick-test-" + std::to_string(random()));
    } while (!fs::create_directory(Path_));
    fs::permissions(Path_, fs::perms::all);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(Path_, ignored);
}

std::string TempFolder::Write(std::string_view name, const Bytes& content) const {
    std::string path = *this / name;
    std::ofstream file(Utf8Path(path), std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
    return path;
}

Bytes ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    Bytes bytes(content.size());
    std::transform(content.begin(), content.end(), bytes.begin(),
                   [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

}  // namespace burnwick::test
