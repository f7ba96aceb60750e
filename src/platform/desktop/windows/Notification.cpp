#include "platform/desktop/Notification.h"

#include "platform/process/windows/SystemHeaders.h"

#include <shellapi.h>

#include <algorithm>
#include <array>
#include <span>

#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

constexpr UINT IconMessage = WM_APP;

// Cut where the system's room ends, between characters.
void Put(std::span<wchar_t> room, const std::string& text) {
    const auto wide = WideText(text);
    std::size_t length = std::min(wide.size(), room.size() - 1);
    if (length < wide.size() && IS_HIGH_SURROGATE(wide[length - 1])) {
        --length;
    }
    *std::copy_n(wide.begin(), length, room.begin()) = L'\0';
}

// The first icon of the program's file; the system's for programs where it has none.
HICON ProgramIcon() {
    std::array<wchar_t, 32'768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    HICON icon = nullptr;
    ExtractIconExW(path.data(), 0, nullptr, &icon, 1);
    return icon != nullptr ? icon : LoadIconW(nullptr, IDI_APPLICATION);
}

// Messages belong to an icon beside the clock, and that to a window: this one is never seen.
class MessageIcon {
public:
    MessageIcon() : Window_(NewWindow()), Icon_(ProgramIcon()) {}
    MessageIcon(const MessageIcon&) = delete;
    MessageIcon& operator=(const MessageIcon&) = delete;
    ~MessageIcon() {
        Remove(Window_);
        DestroyWindow(Window_);
    }

    void Show(const std::string& title, const std::string& text) const {
        auto data = DataOf(Window_);
        data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_INFO;
        data.uCallbackMessage = IconMessage;
        data.hIcon = Icon_;
        data.dwInfoFlags = NIIF_USER;
        Put(data.szTip, title);
        Put(data.szInfoTitle, title);
        Put(data.szInfo, text);
        if (Shell_NotifyIconW(NIM_ADD, &data) == 0) {
            Shell_NotifyIconW(NIM_MODIFY, &data);
        }
    }

private:
    static NOTIFYICONDATAW DataOf(HWND window) {
        NOTIFYICONDATAW data{};
        data.cbSize = sizeof data;
        data.hWnd = window;
        data.uID = 1;
        return data;
    }

    static void Remove(HWND window) {
        auto data = DataOf(window);
        Shell_NotifyIconW(NIM_DELETE, &data);
    }

    // Nobody needs the icon when its message is gone.
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        const auto happened = static_cast<UINT>(second);
        if (message == IconMessage && (happened == NIN_BALLOONTIMEOUT || happened == NIN_BALLOONUSERCLICK)) {
            Remove(window);
            return 0;
        }
        return DefWindowProcW(window, message, first, second);
    }

    static HWND NewWindow() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = OnMessage;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"BurnwickMessage";
        RegisterClassW(&windowClass);
        return CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               windowClass.hInstance, nullptr);
    }

    HWND Window_;
    HICON Icon_;
};

// One that does not answer now would be waited for too long.
bool ShellAnswers() {
    constexpr UINT longestWait = 200;  // milliseconds
    const HWND shell = FindWindowW(L"Shell_TrayWnd", nullptr);
    return shell != nullptr
           && SendMessageTimeoutW(shell, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, longestWait, nullptr) != 0;
}

}  // namespace

void Notify(const std::string& title, const std::string& text) {
    if (ShellAnswers()) {
        static const MessageIcon icon;
        icon.Show(title, text);
    }
}

}  // namespace burnwick
