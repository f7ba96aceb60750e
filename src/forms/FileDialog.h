#pragma once

#include <string>

class QWidget;

namespace burnwick {

// The dialogs that ask for an image file, at first in the folder `initDir`. Each gives its path, or nothing
// when the user cancelled. A filter reads "Burnwick File (*.bin)".
std::string AskForFileToOpen(QWidget* parent, const std::string& title, const std::string& filter,
                             const std::string& initDir);

// Asks before an existing file is replaced; a name without an extension gets ".bin".
std::string AskForFileToSave(QWidget* parent, const std::string& initDir);

}  // namespace burnwick
