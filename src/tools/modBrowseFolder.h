#pragma once

#include <string>

class QWidget;

namespace burnwick::modBrowseFolder {

// Asks for a folder. Gives its path, or nothing when the user cancelled.
std::string BrowseForFolder(QWidget* owner, const std::string& title);

}  // namespace burnwick::modBrowseFolder
