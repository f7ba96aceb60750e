#pragma once

#include <filesystem>
#include <string_view>

namespace burnwick {

// Gives a file new content, whole or not at all: whoever reads it, and whatever ends the process meanwhile,
// finds the old content or the new. Keeps the file's permissions; a link stays one. False when the old
// content is still there: the folder or the file may not be written, or the disk is full. Two callers at a
// time for one file need a lock between them.
bool ReplaceFile(const std::filesystem::path& path, std::string_view content);

}  // namespace burnwick
