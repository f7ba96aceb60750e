#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace burnwick {

// What an image is to the desktop.
inline constexpr std::string_view ImageMimeType = "application/x-burnwick-image";

// The text of the desktop entry with which a file manager hands an image to the program (an absolute path).
std::string AssociationEntry(const std::filesystem::path& program);

// The text of the one that just starts it.
std::string LauncherEntry(const std::filesystem::path& program);

// The program to which an entry hands a file; empty when the text names none.
std::filesystem::path ProgramOf(const std::string& entry);

}  // namespace burnwick
