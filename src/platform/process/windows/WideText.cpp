#include "platform/process/windows/WideText.h"

#include "platform/process/Utf16.h"

namespace burnwick {

std::wstring WideText(std::string_view utf8) {
    return Utf16Of(utf8);
}

std::string NarrowText(std::wstring_view wide) {
    return Utf8Of(wide);
}

}  // namespace burnwick
