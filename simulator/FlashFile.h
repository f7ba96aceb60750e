#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace simulator {

// The file in which a unit's memory outlives the program.
class FlashFile {
public:
    // A missing file is created, erased, with `size` bytes. Throws std::runtime_error with a text for the
    // user when the file cannot be had or is no whole number of blocks.
    FlashFile(const std::filesystem::path& path, std::size_t size);

    // As the file holds it.
    const std::vector<std::byte>& Contents() const { return Contents_; }

    // Replaces the file whole, unless it already holds this. Throws std::runtime_error; the old file is then
    // intact.
    void Keep(const std::vector<std::byte>& flash);

private:
    void Load();
    void Replace(const std::vector<std::byte>& flash);

    std::filesystem::path Path_;
    std::vector<std::byte> Contents_;
};

}  // namespace simulator
