#include "platform/files/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>
#include <utility>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick {

namespace {

using Clock = std::chrono::steady_clock;

class FlockedFile final : public FileLock {
public:
    explicit FlockedFile(UniqueFd fd) : Fd_(std::move(fd)) {}

private:
    UniqueFd Fd_;
};

}  // namespace

std::unique_ptr<FileLock> LockFile(const std::filesystem::path& path, std::chrono::milliseconds atMost) {
    constexpr auto pause = std::chrono::milliseconds(3);
    constexpr mode_t forEveryone = 0666;  // less the user's own mask

    // Reading is enough to lock: a file that another user made serves too.
    UniqueFd fd(open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, forEveryone));
    const auto limit = Clock::now() + atMost;
    while (fd) {
        if (flock(fd.Get(), LOCK_EX | LOCK_NB) == 0) {
            return std::make_unique<FlockedFile>(std::move(fd));
        }
        if ((errno != EWOULDBLOCK && errno != EINTR) || Clock::now() >= limit) {
            break;
        }
        std::this_thread::sleep_for(pause);
    }
    return nullptr;
}

}  // namespace burnwick
