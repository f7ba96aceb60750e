#pragma once

#include <string>

namespace burnwick {

// Shows the user a message beside all windows, for as long as the desktop likes. The texts (UTF-8) are shown
// as they stand. A desktop without such messages is no error; waits for one a fifth of a second at most. To
// be called from one thread only.
void Notify(const std::string& title, const std::string& text);

}  // namespace burnwick
