#pragma once

#include <cstddef>
#include <filesystem>

namespace bench {

// An image file that any unit takes: a type code, and behind it bytes that look random, the same ones in
// every run, and hold none of the markers.
void WriteUnmarkedImage(const std::filesystem::path& path, std::size_t size);

// The same with the marker of a type that may have any length, for units that identify themselves with 'I'.
// It carries its length where the link puts it, so that the unit gives back the same file.
void WriteMarkedImage(const std::filesystem::path& path, std::size_t size);

bool SameContents(const std::filesystem::path& one, const std::filesystem::path& other);

}  // namespace bench
