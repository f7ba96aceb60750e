#include "settings/modActivatePrevInstance.h"

#include "platform/window/SingleInstance.h"

namespace burnwick::modActivatePrevInstance {

bool ActivatePrevInstance(SingleInstance& copies, const std::string& programmingStatus) {
    if (programmingStatus == "Yes" || !copies.AnotherRuns()) {
        return false;
    }
    // One that cannot be brought forward, for it hangs, is no reason to leave the user without a window.
    return copies.BringForward();
}

}  // namespace burnwick::modActivatePrevInstance
