#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "settings/IniText.h"

// The settings file.
namespace burnwick::modUtility {

// Names the file, once, at the start of a program.
void SetIniPath(const std::filesystem::path& path);

// How long a writer waits for other copies of the program (2 s); then it leaves the file as it is.
void SetLockLimit(std::chrono::milliseconds limit);

// The value of a key; empty when the file, the section or the key is missing. At most 254 characters of it:
// what a buffer of 255 holds besides its end. A value that is not UTF-8 is read as one in the system's own
// 8-bit characters, where it has such; elsewhere it is given as it is.
std::string ReadIniValue(const std::string& section, const std::string& key);

// Stores a value, and makes file, section and key when they are missing; every other line stays as it is. The
// file is replaced whole, under a lock that other copies of the program heed. What cannot be written is left.
void WriteIniValue(const std::string& section, const std::string& key, const std::string& value);

// The same for several values: one lock, one replacement. `change` is called on the file's text without the
// lock first, and again under it if that has changed the text.
void ChangeIni(const std::function<void(IniText&)>& change);

}  // namespace burnwick::modUtility
