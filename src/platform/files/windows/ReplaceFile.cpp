#include "platform/files/ReplaceFile.h"

#include "platform/process/windows/SystemHeaders.h"

#include <aclapi.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr DWORD SharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct LocalMemory {
    void operator()(void* memory) const { LocalFree(memory); }
};

// What a link leads to; nothing when that is not there.
std::optional<fs::path> TargetOf(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    const UniqueHandle target(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, SharedByAll, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    constexpr DWORD longestPath = 32'768;
    std::wstring name(longestPath, L'\0');
    const DWORD length =
        target ? GetFinalPathNameByHandleW(target.Get(), name.data(), longestPath, FILE_NAME_NORMALIZED) : 0;
    if (length == 0 || length >= longestPath) {
        return std::nullopt;
    }
    name.resize(length);
    return name;
}

// Writing beside it and renaming would go past what the file's own permissions say.
bool MayBeWritten(const fs::path& path) {
    const UniqueHandle file(
        CreateFileW(path.c_str(), FILE_WRITE_DATA, SharedByAll, nullptr, OPEN_EXISTING, 0, nullptr));
    // Who else has it open is seen when it is replaced.
    return file || GetLastError() == ERROR_SHARING_VIOLATION;
}

// A refusal is no reason to lose what is to be written: a network's folder gives the file its permissions.
void GivePermissionsOf(const fs::path& old, const fs::path& fresh) {
    PACL permissions = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring from = old.native();
    if (GetNamedSecurityInfoW(from.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &permissions, nullptr, &descriptor)
        != ERROR_SUCCESS) {
        return;
    }
    const std::unique_ptr<void, LocalMemory> kept(descriptor);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(descriptor, &control, &revision);
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring to = fresh.native();
    SetNamedSecurityInfoW(to.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr,
                          nullptr, permissions, nullptr);
}

bool WriteAll(HANDLE file, std::string_view content) {
    constexpr std::size_t mostAtOnce = 0x1000'0000;
    while (!content.empty()) {
        const auto size = static_cast<DWORD>(std::min(content.size(), mostAtOnce));
        DWORD written = 0;
        if (WriteFile(file, content.data(), size, &written, nullptr) == 0 || written == 0) {
            return false;
        }
        content.remove_prefix(written);
    }
    return true;
}

// Made by this call alone: a link that waits under the name is not followed.
bool WriteNew(const fs::path& path, const fs::path* old, DWORD attributes, std::string_view content) {
    DeleteFileW(path.c_str());
    const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, SharedByAll, nullptr, CREATE_NEW,
                                        attributes | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file) {
        return false;
    }
    if (old != nullptr) {
        GivePermissionsOf(*old, path);
    }
    return WriteAll(file.Get(), content) && FlushFileBuffers(file.Get()) != 0;
}

// A reader who does not know that files are replaced, a virus scanner for one, is soon done.
bool Rename(const fs::path& fresh, const fs::path& path) {
    using Clock = std::chrono::steady_clock;
    constexpr auto longestWait = std::chrono::seconds(1);
    constexpr auto pause = std::chrono::milliseconds(3);
    const auto limit = Clock::now() + longestWait;
    for (;;) {
        if (MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
            != 0) {
            return true;
        }
        const DWORD error = GetLastError();
        if ((error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) || Clock::now() >= limit) {
            return false;
        }
        std::this_thread::sleep_for(pause);
    }
}

}  // namespace

bool ReplaceFile(const fs::path& path, std::string_view content) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE
                           | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;
    const auto target = TargetOf(path);
    if (!target) {
        return false;
    }
    const DWORD old = GetFileAttributesW(target->c_str());
    const bool isThere = old != INVALID_FILE_ATTRIBUTES;
    if (isThere ? (old & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0 || !MayBeWritten(*target)
                : GetLastError() != ERROR_FILE_NOT_FOUND) {
        return false;
    }
    fs::path fresh = *target;
    fresh += L".new";
    const DWORD attributes = isThere ? old & kept : DWORD{FILE_ATTRIBUTE_NORMAL};
    if (WriteNew(fresh, isThere ? &*target : nullptr, attributes, content) && Rename(fresh, *target)) {
        return true;
    }
    DeleteFileW(fresh.c_str());
    return false;
}

}  // namespace burnwick
