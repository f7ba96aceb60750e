#pragma once

#include "platform/window/SystemMenu.h"

// Changes the main window's system menu.
namespace burnwick::modSystemMenu {

// Greys the Close command if it is enabled, enables it if it is greyed. Keeps no count.
void ToggleCloseCommand(SystemMenu& menu);

// Takes a command away: 0 Restore, 1 Move, 2 Size, 3 Minimize, 4 Maximize, 5 Close. Any other number takes
// nothing, and draws the title bar only.
void RemoveSystemMenuItem(SystemMenu& menu, int item);

}  // namespace burnwick::modSystemMenu
