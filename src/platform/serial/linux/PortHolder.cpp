#include "platform/serial/linux/PortHolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

// The number of the character device that the path leads to. Never waits for a file server that is gone: the
// open files of every process are looked at.
std::optional<dev_t> DeviceNumber(const fs::path& path) {
    struct statx status {};
    if (statx(AT_FDCWD, path.c_str(), AT_STATX_DONT_SYNC, STATX_TYPE, &status) != 0
        || !S_ISCHR(status.stx_mode)) {
        return std::nullopt;
    }
    return makedev(status.stx_rdev_major, status.stx_rdev_minor);
}

std::optional<pid_t> ProcessNumber(const fs::path& folder) {
    const auto name = folder.filename().string();
    pid_t process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    if (error != std::errc() || end != name.data() + name.size()) {
        return std::nullopt;
    }
    return process;
}

bool HasOpen(const fs::path& processFolder, dev_t device) {
    std::error_code error;
    for (fs::directory_iterator file(processFolder / "fd", error), end; !error && file != end;
         file.increment(error)) {
        if (DeviceNumber(file->path()) == device) {
            return true;
        }
    }
    return false;
}

std::string ProcessName(const fs::path& processFolder) {
    std::string name;
    std::getline(std::ifstream(processFolder / "comm"), name);
    return name.empty() ? "a program" : name;
}

// The process that has locked the file, from the system's table of locks: lines such as
// "1: FLOCK  ADVISORY  WRITE 4711 00:18:5 0 EOF", the file as its device in hexadecimal and its inode.
std::optional<pid_t> FindLockHolder(const std::string& path) {
    struct stat file {};
    if (stat(path.c_str(), &file) != 0) {
        return std::nullopt;
    }
    std::array<char, 64> wanted{};
    std::snprintf(wanted.data(), wanted.size(), "%02x:%02x:%llu", major(file.st_dev), minor(file.st_dev),
                  static_cast<unsigned long long>(file.st_ino));
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream fields(line);
        std::string number;
        std::string kind;
        std::string strength;
        std::string access;
        pid_t process = 0;
        std::string locked;
        fields >> number >> kind >> strength >> access >> process >> locked;
        if (kind == "FLOCK" && locked == wanted.data() && process > 0) {
            return process;
        }
    }
    return std::nullopt;
}

fs::path FolderOf(pid_t process) {
    return fs::path("/proc") / std::to_string(process);
}

}  // namespace

// Who has locked the device keeps us out; who merely has it open is the next best guess.
std::optional<PortHolder> FindPortHolder(const std::string& device) {
    if (const auto process = FindLockHolder(device)) {
        return PortHolder{*process, ProcessName(FolderOf(*process))};
    }
    const auto number = DeviceNumber(device);
    std::error_code error;
    for (fs::directory_iterator folder("/proc", error), end; number && !error && folder != end;
         folder.increment(error)) {
        const auto process = ProcessNumber(folder->path());
        if (process && HasOpen(folder->path(), *number)) {
            return PortHolder{*process, ProcessName(folder->path())};
        }
    }
    return std::nullopt;
}

}  // namespace burnwick
