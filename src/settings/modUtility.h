#pragma once

#include <filesystem>
#include <string>

// The settings file.
namespace burnwick::modUtility {

// Names the file, once, at the start of a program.
void SetIniPath(const std::filesystem::path& path);

// The value of a key; empty when the file, the section or the key is missing. At most 254 bytes of it: what a
// buffer of 255 holds besides its end.
std::string ReadIniValue(const std::string& section, const std::string& key);

// Stores a value, and makes file, section and key when they are missing; every other line stays as it is. The
// file is replaced whole, under a lock that other copies of the program heed. What cannot be written is left.
void WriteIniValue(const std::string& section, const std::string& key, const std::string& value);

}  // namespace burnwick::modUtility
