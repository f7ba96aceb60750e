#include "platform/desktop/OpenLink.h"

#include "platform/process/windows/SystemHeaders.h"

#include <shellapi.h>

#include "platform/desktop/windows/ComApartment.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

bool OpenLink(const std::string& link) {
    // What the call gives where it has failed is no more than this.
    constexpr INT_PTR lastError = 32;
    // A handler may be an object of the shell.
    const ComApartment apartment;
    const auto answer =
        ShellExecuteW(nullptr, nullptr, WideText(link).c_str(), nullptr, L"C:\\", SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(answer) > lastError;
}

}  // namespace burnwick
