// The copy commands, another program that asks for the clipboard, and names that the system takes for one.
#include "gui/CopyTest.h"
#include "platform/process/windows/SystemHeaders.h"

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

class frmMainCopyOnWindows : public CopyTest {};

TEST_F(frmMainCopyOnWindows, OtherProgramsGetTheImagesDescription) {
    Show(
        Image("gr\xC3\xB6\xC3\x9F"
              "e \xE2\x82\xAC.bin"));
    Trigger("mnuFileCopy");
    EXPECT_THAT(TextOnTheClipboard(), ::testing::StartsWith(L"gr\u00F6\u00DFe \u20AC.bin    VX-1600    "));
}

// The system takes both names for one: without a question nothing is replaced.
TEST_F(frmMainCopyOnWindows, AFileInOtherLettersIsLeftAlone) {
    Show(Image());
    Folder.Write("to/UNIT.BIN", Old_);
    User.TypeFile(To_.string());
    User.ClickInBox(QMessageBox::Ok);
    Trigger("mnuFileCopyToFolder");
    ExpectCopyError("The folder holds another file that this one would replace.");
    EXPECT_EQ(ReadFile(To_ / "UNIT.BIN"), Old_);
}

}  // namespace burnwick::test
