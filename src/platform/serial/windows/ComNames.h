#pragma once

#include <string>

namespace burnwick {

// What the user knows the port by: "COM5" of `\\.\COM5`, "//./com5" and "com5", "CNCA0" of `\\.\CNCA0`. A
// path that is none of a device stays as it is.
std::string ComName(const std::string& path);

// True for "COM" with a number behind it, as ComName gives it.
bool IsComNumber(const std::string& name);

// What the system opens it by: COM10 and above are found under `\\.\` only.
std::string ComPath(const std::string& path);

}  // namespace burnwick
