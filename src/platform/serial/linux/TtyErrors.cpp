#include "platform/serial/linux/TtyErrors.h"

#include <grp.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "platform/serial/linux/PortHolder.h"

namespace burnwick {

namespace {

std::string GroupName(gid_t number) {
    group entry{};
    group* found = nullptr;
    std::array<char, 16384> room{};
    getgrgid_r(number, &entry, room.data(), room.size(), &found);
    return found != nullptr ? found->gr_name : std::to_string(number);
}

CommError NotPermittedError(const std::string& path) {
    constexpr mode_t groupMayUseIt = S_IRGRP | S_IWGRP;
    struct stat status {};
    std::string remedy = "its folder is closed to this user";
    if (stat(path.c_str(), &status) == 0) {
        remedy = (status.st_mode & groupMayUseIt) == groupMayUseIt
                     ? "add yourself to the group that owns it (" + GroupName(status.st_gid) + ")"
                     : "only its owner may use it, so choose another port or have its permissions changed";
    }
    return {CommErrorNumber::NotPermitted, path + ": permission denied: " + remedy};
}

}  // namespace

CommError DeviceError(const std::string& path, int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENXIO:
        case ENODEV:
            return MissingDeviceError(path);
        case EACCES:
        case EPERM:
            return NotPermittedError(path);
        case EBUSY:
        case EWOULDBLOCK:
            return BusyError(path);
        case ENOTTY:
        case EINVAL:
            return NotSerialError(path);
        case EIO:
            return {CommErrorNumber::NotSerial,
                    path + ": input/output error: there is no hardware behind it, choose another port"};
        default:
            return {CommErrorNumber::Broken,
                    path + " cannot be opened: " + std::generic_category().message(error)};
    }
}

CommError BusyError(const std::string& path) {
    const auto holder = FindPortHolder(path);
    const auto who =
        holder ? holder->Name + " (process " + std::to_string(holder->Process) + ")" : "another program";
    return {CommErrorNumber::Busy, path + " is in use by " + who};
}

}  // namespace burnwick
