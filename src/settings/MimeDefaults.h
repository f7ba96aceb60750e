#pragma once

#include <string>
#include <string_view>

namespace burnwick {

// Which programs open files of a type: what the user chose, as the text of a "mimeapps.list" has it. A
// program is called by the name of its desktop entry ("Burnwick.desktop").

// True when the program comes before all others.
bool IsDefault(const std::string& list, std::string_view type, std::string_view entry);

// The text with the program before all others, and never refused. All the rest stays as it is.
std::string WithDefault(std::string list, std::string_view type, std::string_view entry);

// The text without what was chosen for this type and program.
std::string WithoutDefault(std::string list, std::string_view type, std::string_view entry);

}  // namespace burnwick
