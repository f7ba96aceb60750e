#include "platform/process/EightBitText.h"

namespace burnwick {

std::optional<std::string> FromEightBit(std::string_view /*text*/) {
    return std::nullopt;
}

}  // namespace burnwick
