#include "bench/TestImage.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bench {

namespace {

std::string RandomBytes(std::size_t size) {
    std::minstd_rand numbers;  // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp): always the same
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&numbers] { return static_cast<char>(numbers() >> 8U); });
    return bytes;
}

void Write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

void WriteUnmarkedImage(const std::filesystem::path& path, std::size_t size) {
    constexpr std::string_view typeCode("\xC0\xDE\0\0", 4);
    Write(path, RandomBytes(size).replace(0, typeCode.size(), typeCode));
}

void WriteMarkedImage(const std::filesystem::path& path, std::size_t size) {
    auto bytes = RandomBytes(size);
    std::string beginning = "\xC0\xDE\x01\x49";
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        beginning += static_cast<char>(size >> shift);
    }
    Write(path, bytes.replace(0, beginning.size(), beginning));
}

bool SameContents(const std::filesystem::path& one, const std::filesystem::path& other) {
    return Read(one) == Read(other);
}

}  // namespace bench
