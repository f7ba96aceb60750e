#pragma once

#include <string>

namespace burnwick {

// Opens an address with the program that the desktop has for it, and does not wait. False when there is none.
bool OpenLink(const std::string& link);

}  // namespace burnwick
