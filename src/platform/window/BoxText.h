#pragma once

#include <string>

namespace burnwick {

// What a message box says.
struct BoxText {
    std::string Caption;
    std::string Text;
};

}  // namespace burnwick
