#include "platform/desktop/Registry.h"
#include "platform/desktop/ShellCalls.h"

namespace burnwick {

// Desktops read files here, whose rules are the system's own.
std::unique_ptr<Registry> SystemRegistry() {
    return nullptr;
}

std::unique_ptr<ShellCalls> SystemShellCalls() {
    return nullptr;
}

}  // namespace burnwick
