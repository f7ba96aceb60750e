#include "platform/window/qt/OtherCopy.h"

#include <QCryptographicHash>
#include <vector>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

// The user that a process runs as; empty when that is not to be known.
std::vector<std::byte> UserOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (process == nullptr || OpenProcessToken(process, TOKEN_QUERY, &opened) == FALSE) {
        return {};
    }
    const UniqueHandle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> user(size);
    if (GetTokenInformation(token.Get(), TokenUser, user.data(), size, &size) == FALSE) {
        return {};
    }
    return user;
}

bool IsSameUser(HANDLE process) {
    auto other = UserOf(process);
    auto own = UserOf(GetCurrentProcess());
    const auto sid = [](std::vector<std::byte>& user) {
        return reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid;
    };
    return !other.empty() && !own.empty() && EqualSid(sid(other), sid(own)) != FALSE;
}

}  // namespace

// One user may be logged in several times at once, each time with a screen of its own.
std::string SessionName() {
    DWORD session = 0;
    ProcessIdToSessionId(GetCurrentProcessId(), &session);
    return std::to_string(session);
}

// A pipe has a name of 256 characters at most, without folders, among those of all users.
QString SocketNameOf(const std::filesystem::path& path) {
    const QByteArray name = QString::fromStdWString(path.native()).toUtf8();
    return "burnwick-" + QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex();
}

// Any user may make a pipe of any name that is free. Only a program that is in front itself may give its
// place away.
bool LetComeForward(qintptr socket) {
    ULONG id = 0;
    if (GetNamedPipeServerProcessId(reinterpret_cast<HANDLE>(socket), &id) == FALSE) {
        return false;
    }
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    if (!IsSameUser(process.Get())) {
        return false;
    }
    AllowSetForegroundWindow(id);
    return true;
}

}  // namespace burnwick
