#include "platform/Registry.h"
#include "platform/ShellCalls.h"

namespace burnwick {

// Desktops read files here, whose rules are the system's own.
std::unique_ptr<Registry> SystemRegistry() {
    return nullptr;
}

std::unique_ptr<ShellCalls> SystemShellCalls() {
    return nullptr;
}

}  // namespace burnwick
