#pragma once

#include "platform/LineSettings.h"

namespace burnwick {

// Waits until what was written has left the line, a second at most: tcdrain() knows no limit.
void LetOutputLeave(int fd, const LineSettings& settings);

}  // namespace burnwick
