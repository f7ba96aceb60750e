#include "platform/ShellIntegration.h"

namespace burnwick {

// Registry and links are all there is: the rules above them are not the system's.
std::unique_ptr<ShellIntegration> SystemShell() {
    return nullptr;
}

}  // namespace burnwick
