#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace burnwick {

// A file's content; empty when there is no file. Nothing when there is something that cannot be read, or is
// no file: what is in it must not be taken for empty. A file that is being replaced gives the old content or
// the new.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

}  // namespace burnwick
