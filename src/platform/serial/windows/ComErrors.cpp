#include "platform/serial/windows/ComErrors.h"

#include <array>

#include "platform/process/PlainText.h"
#include "platform/process/windows/SystemHeaders.h"
#include "platform/process/windows/WideText.h"
#include "platform/serial/windows/ComNames.h"

namespace burnwick {

namespace {

// A folder is denied in the same words as a port that is taken.
bool IsFileOrFolder(const std::string& path) {
    return !IsComNumber(ComName(path))
           && GetFileAttributesW(WideText(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

CommError Because(CommErrorNumber number, const std::string& what, unsigned long error,
                  const std::string& remedy) {
    return {number, what + " (" + SystemMessage(error) + "): " + remedy};
}

}  // namespace

CommError DeviceError(const std::string& path, unsigned long error) {
    constexpr DWORD noSuchDevice = 433;  // ERROR_NO_SUCH_DEVICE, which older headers lack
    const std::string name = ComName(path);
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_DEV_NOT_EXIST:
        case noSuchDevice:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_DEVICE_REMOVED:
            return MissingDeviceError(name);
        case ERROR_ACCESS_DENIED:
            if (IsFileOrFolder(path)) {
                return NotSerialError(name);
            }
            // A serial driver says so to whoever comes second.
            [[fallthrough]];
        case ERROR_SHARING_VIOLATION:
        case ERROR_BUSY:
        case ERROR_DEVICE_IN_USE:
            return Because(CommErrorNumber::Busy, name + " is in use by another program", error,
                           "close that program, or choose another port");
        case ERROR_PRIVILEGE_NOT_HELD:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_ACCESS_DISABLED_BY_POLICY:
            return Because(CommErrorNumber::NotPermitted, name + ": permission denied", error,
                           "have the port allowed to you, or choose another one");
        case ERROR_INVALID_FUNCTION:
        case ERROR_INVALID_HANDLE:
        case ERROR_NOT_SUPPORTED:
            return NotSerialError(name);
        case ERROR_GEN_FAILURE:
        case ERROR_NOT_READY:
        case ERROR_SEM_TIMEOUT:
        case ERROR_IO_DEVICE:
            return Because(CommErrorNumber::Broken, name + " does not work", error,
                           "pull the adapter out, and plug it in again");
        default:
            return {CommErrorNumber::Broken, name + " cannot be opened: " + SystemMessage(error)};
    }
}

std::string SystemMessage(unsigned long error) {
    std::array<wchar_t, 1024> room{};
    constexpr DWORD inOneLine = FORMAT_MESSAGE_MAX_WIDTH_MASK;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | inOneLine, nullptr, error,
                       0, room.data(), static_cast<DWORD>(room.size()), nullptr);
    auto text = PlainText(NarrowText({room.data(), length}), ' ');
    text.erase(text.find_last_not_of(" .") + 1);
    return text.empty() ? "error " + std::to_string(error) : text;
}

}  // namespace burnwick
