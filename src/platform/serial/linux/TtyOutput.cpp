#include "platform/serial/linux/TtyOutput.h"

#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

namespace burnwick {

bool IsPseudoTerminal(int fd) {
    constexpr unsigned firstMajor = 136;
    constexpr unsigned lastMajor = 143;
    struct stat status {};
    if (fstat(fd, &status) != 0) {
        return false;
    }
    const auto kind = major(status.st_rdev);
    return kind >= firstMajor && kind <= lastMajor;
}

bool DriverHoldsOutput(int fd) {
    int waiting = 0;
    return ioctl(fd, TIOCOUTQ, &waiting) == 0 && waiting > 0;
}

std::optional<bool> ChipIsEmpty(int fd) {
    unsigned state = 0;
    if (ioctl(fd, TIOCSERGETLSR, &state) != 0) {
        return std::nullopt;
    }
    return (state & TIOCSER_TEMT) != 0;
}

}  // namespace burnwick
