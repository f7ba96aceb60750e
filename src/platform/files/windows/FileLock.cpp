#include "platform/files/FileLock.h"

#include <thread>
#include <utility>

#include "platform/process/windows/UniqueHandle.h"

namespace burnwick {

namespace {

// The file is empty, and stays so: what is locked lies beyond its end.
constexpr DWORD LockedBytes = 1;

class LockedFile final : public FileLock {
public:
    explicit LockedFile(UniqueHandle file) : File_(std::move(file)) {}
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    // Closing alone would do it too, but when the system finds the time.
    ~LockedFile() override {
        OVERLAPPED fromStart{};
        UnlockFileEx(File_.Get(), 0, LockedBytes, 0, &fromStart);
    }

private:
    UniqueHandle File_;
};

bool TryToLock(HANDLE file) {
    OVERLAPPED fromStart{};
    return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, LockedBytes, 0,
                      &fromStart)
           != 0;
}

}  // namespace

std::unique_ptr<FileLock> LockFile(const std::filesystem::path& path, std::chrono::milliseconds atMost) {
    using Clock = std::chrono::steady_clock;
    constexpr auto pause = std::chrono::milliseconds(3);

    // Reading is enough to lock: a file that another user made serves too. No child process inherits it.
    UniqueHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    const auto limit = Clock::now() + atMost;
    while (file) {
        if (TryToLock(file.Get())) {
            return std::make_unique<LockedFile>(std::move(file));
        }
        const DWORD error = GetLastError();
        if ((error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) || Clock::now() >= limit) {
            break;
        }
        std::this_thread::sleep_for(pause);
    }
    return nullptr;
}

}  // namespace burnwick
