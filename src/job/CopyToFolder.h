#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>

// What it takes to copy a file into a folder that a user has chosen. Texts are UTF-8.
namespace burnwick {

// The path of a name in a folder. An empty folder is the root: that is what is left of the path of a file in
// it.
std::filesystem::path PathIn(const std::string& folder, const std::string& name);

// Whether the folder has a file listed under exactly this name, letter case included. A folder of that name
// is no file. `error` tells why the folder cannot be listed.
bool HasFile(const std::string& folder, const std::string& name, std::error_code& error);

// A file in one line for a user: "1,024KB, 07/22/2004 9:05:09".
std::string SizeAndTime(std::uint64_t bytes, const std::tm& modified);

// The same of a file that is there; "N/A" for one that tells nothing.
std::string SizeAndTimeOf(const std::filesystem::path& file);

// In words for a user why a file cannot be copied from where it is; empty when it can.
std::string SourceTrouble(const std::filesystem::path& source);

enum class Existing : std::uint8_t { Keep, Replace };

// Copies a file, whole or not at all: whatever comes between, the target has its old content or the new. A
// target that is replaced keeps its permissions, and a link stays one; a new one has the source's. A file
// that would be copied onto itself is left alone. Gives an empty text, or in words for a user why there is no
// copy.
std::string CopyWhole(const std::filesystem::path& source, const std::filesystem::path& target,
                      Existing existing);

}  // namespace burnwick
