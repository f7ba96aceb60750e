// What another program finds on the clipboard.
#include "gui/CopyTest.h"
#include "platform/windows/SystemHeaders.h"

namespace burnwick::test {

namespace {

// As any program asks for it, without the toolkit. Empty when there is no text.
std::wstring TextOnTheClipboard() {
    std::wstring text;
    if (OpenClipboard(nullptr) != FALSE) {
        const HANDLE held = GetClipboardData(CF_UNICODETEXT);
        if (const auto* const locked =
                static_cast<const wchar_t*>(held == nullptr ? nullptr : GlobalLock(held))) {
            text = locked;
            GlobalUnlock(held);
        }
        CloseClipboard();
    }
    return text;
}

}  // namespace

class frmMainClipboard : public CopyTest {};

TEST_F(frmMainClipboard, OtherProgramsGetTheImagesDescription) {
    Show(
        Image("gr\xC3\xB6\xC3\x9F"
              "e \xE2\x82\xAC.bin"));
    Trigger("mnuFileCopy");
    EXPECT_THAT(TextOnTheClipboard(), ::testing::StartsWith(L"gr\u00F6\u00DFe \u20AC.bin    VX-1600    "));
}

}  // namespace burnwick::test
