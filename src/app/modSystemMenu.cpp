#include "app/modSystemMenu.h"

#include <array>

namespace burnwick::modSystemMenu {

void ToggleCloseCommand(SystemMenu& menu) {
    menu.SetCloseGreyed(!menu.CloseIsGreyed());
    menu.DrawTitleBar(true);
}

void RemoveSystemMenuItem(SystemMenu& menu, int item) {
    static constexpr std::array commands{SystemCommand::Restore,  SystemCommand::Move,
                                         SystemCommand::Size,     SystemCommand::Minimize,
                                         SystemCommand::Maximize, SystemCommand::Close};
    if (item >= 0 && item < static_cast<int>(commands.size())) {
        menu.Delete(commands.at(static_cast<std::size_t>(item)));
    }
    menu.DrawTitleBar(false);
    menu.DrawTitleBar(true);
}

}  // namespace burnwick::modSystemMenu
