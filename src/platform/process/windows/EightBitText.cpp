#include "platform/process/EightBitText.h"

#include "platform/process/windows/SystemHeaders.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

// That of the computer's language. GetACP() tells what this program asks for itself in its manifest, UTF-8.
UINT SystemCodePage() {
    constexpr UINT western = 1252;
    DWORD page = 0;
    GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                   reinterpret_cast<wchar_t*>(&page), sizeof page / sizeof(wchar_t));
    // Some languages have none.
    return page == CP_ACP || page == CP_UTF8 ? western : page;
}

}  // namespace

std::optional<std::string> FromEightBit(std::string_view text) {
    const UINT page = SystemCodePage();
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // no character of these becomes more than one
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(page, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()))));
    return NarrowText(wide);
}

}  // namespace burnwick
