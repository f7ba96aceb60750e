#include "platform/linux/TtyDrain.h"

#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

namespace burnwick {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto longestWait = std::chrono::seconds(1);
constexpr auto step = std::chrono::milliseconds(1);

// Characters that a chip may still hold when the driver has handed on its last one.
constexpr int chipDepth = 20;

// A pseudo-terminal delivers what it is given at once.
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

// Nothing when the driver cannot look into its chip.
std::optional<bool> ChipIsEmpty(int fd) {
    unsigned state = 0;
    if (ioctl(fd, TIOCSERGETLSR, &state) != 0) {
        return std::nullopt;
    }
    return (state & TIOCSER_TEMT) != 0;
}

}  // namespace

void LetOutputLeave(int fd, const LineSettings& settings) {
    if (IsPseudoTerminal(fd)) {
        return;
    }
    const auto limit = Clock::now() + longestWait;
    while (DriverHoldsOutput(fd) && Clock::now() < limit) {
        std::this_thread::sleep_for(step);
    }
    auto empty = ChipIsEmpty(fd);
    if (!empty) {
        std::this_thread::sleep_until(std::min(limit, Clock::now() + chipDepth * CharacterTime(settings)));
        return;
    }
    while (empty == false && Clock::now() < limit) {
        std::this_thread::sleep_for(step);
        empty = ChipIsEmpty(fd);
    }
}

}  // namespace burnwick
