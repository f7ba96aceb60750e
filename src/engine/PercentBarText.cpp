#include "engine/PercentBarText.h"

#include <algorithm>

namespace burnwick {

int BarPercent(int value, int max) {
    if (max <= 0) {
        return 0;
    }
    const int missing = max - std::clamp(value, 0, max);
    return 100 - missing * 100 / max;
}

std::string BarText(const std::string& caption, int percent) {
    return caption.find("Bar") == std::string::npos ? caption : std::to_string(percent) + "%";
}

}  // namespace burnwick
