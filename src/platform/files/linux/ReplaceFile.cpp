#include "platform/files/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// What a link leads to, be it there or not; nothing when links go round in a circle.
std::optional<fs::path> TargetOf(fs::path path) {
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto next = fs::read_symlink(path, error);
        if (error) {
            return path;
        }
        path = path.parent_path() / next;
    }
    return std::nullopt;
}

bool WriteAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(fd, content.data(), content.size());
        if (written > 0) {
            content.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

// Permissions, and owner and group as far as this user may give them: a file that several users share stays
// so.
bool MakeLike(int fd, const struct stat& old) {
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    constexpr mode_t permissions = 07777;
    // A refusal is no reason to lose what is to be written.
    static_cast<void>(fchown(fd, old.st_uid, old.st_gid) == 0 || fchown(fd, sameOwner, old.st_gid) == 0);
    return fchmod(fd, old.st_mode & permissions) == 0;
}

// Made by this call alone: a link or a pipe that waits under the name is not followed.
bool WriteNew(const fs::path& path, const std::optional<struct stat>& old, std::string_view content) {
    constexpr mode_t forEveryone = 0666;  // less the user's own mask
    constexpr mode_t forNobodyElse = 0600;
    unlink(path.c_str());
    const UniqueFd fd(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                           old ? forNobodyElse : forEveryone));
    if (!fd || (old && !MakeLike(fd.Get(), *old))) {
        return false;
    }
    return WriteAll(fd.Get(), content) && fsync(fd.Get()) == 0;
}

}  // namespace

bool ReplaceFile(const fs::path& path, std::string_view content) {
    const auto target = TargetOf(path);
    if (!target) {
        return false;
    }
    struct stat status {};
    std::optional<struct stat> old;
    if (stat(target->c_str(), &status) == 0) {
        // Writing beside it and renaming would go past what the file's own permissions say.
        if (!S_ISREG(status.st_mode) || faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) {
            return false;
        }
        old = status;
    } else if (errno != ENOENT) {
        return false;
    }
    fs::path fresh = *target;
    fresh += ".new";
    if (WriteNew(fresh, old, content) && rename(fresh.c_str(), target->c_str()) == 0) {
        return true;
    }
    unlink(fresh.c_str());
    return false;
}

}  // namespace burnwick
