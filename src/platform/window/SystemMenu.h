#pragma once

#include <cstdint>
#include <memory>

namespace burnwick {

// What the system knows a window by.
using WindowHandle = std::uintptr_t;

// The commands of a window's system menu: the one behind its icon, with the title bar's buttons.
enum class SystemCommand { Restore, Move, Size, Minimize, Maximize, Close };

// A window's system menu: calls, no policy.
class SystemMenu {
public:
    virtual ~SystemMenu() = default;

    // Takes the command, and its button, away.
    virtual void Delete(SystemCommand command) = 0;

    // A greyed Close command can be given in no way, its button's included.
    virtual bool CloseIsGreyed() const = 0;
    virtual void SetCloseGreyed(bool greyed) = 0;

    // Draws the title bar anew, as that of an active window or of another.
    virtual void DrawTitleBar(bool active) = 0;
};

// The system menu of a window of this process, which must be there for as long.
std::unique_ptr<SystemMenu> SystemMenuOf(WindowHandle window);

}  // namespace burnwick
