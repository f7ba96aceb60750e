#pragma once

#include <string>

// Paths as users and desktops hand them over (UTF-8).
namespace burnwick::DirFile {

// The plain path in what a program was started with, its arguments joined by one blank: without quotes and
// blanks around it, and what stands before a drive ("C:\") or a network share ("\\server"). A file that is
// not there is never taken for another one.
std::string CleanPath(const std::string& argument);

// The part behind the last "\" or "/"; all of it without one.
std::string FileName(const std::string& path);

// The part before the last "\" or "/"; empty without one.
std::string Folder(const std::string& path);

}  // namespace burnwick::DirFile
