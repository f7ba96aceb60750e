#pragma once

#include "platform/window/SystemMenu.h"

namespace burnwick {

// Calls the user to a window of this process, once: its title bar flashes, or whatever the desktop has for
// that.
void AskForAttention(WindowHandle window);

}  // namespace burnwick
