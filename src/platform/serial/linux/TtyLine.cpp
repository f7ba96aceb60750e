#include "platform/serial/linux/TtyLine.h"

#include <linux/serial.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <utility>

namespace burnwick {

namespace {

constexpr std::array<std::pair<unsigned, speed_t>, 30> standardSpeeds{{
    {50, B50},           {75, B75},           {110, B110},         {134, B134},         {150, B150},
    {200, B200},         {300, B300},         {600, B600},         {1200, B1200},       {1800, B1800},
    {2400, B2400},       {4800, B4800},       {9600, B9600},       {19200, B19200},     {38400, B38400},
    {57600, B57600},     {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000},
    {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
}};

constexpr tcflag_t frameFlags = CSIZE | PARENB | PARODD | CSTOPB;

std::optional<speed_t> SpeedOf(unsigned baud) {
    const auto* const found = std::find_if(standardSpeeds.begin(), standardSpeeds.end(),
                                           [baud](const auto& speed) { return speed.first == baud; });
    return found == standardSpeeds.end() ? std::nullopt : std::optional(found->second);
}

tcflag_t FrameFlagsOf(const LineSettings& settings) {
    constexpr std::array<tcflag_t, 4> sizes{CS5, CS6, CS7, CS8};
    tcflag_t flags = sizes.at(settings.DataBits - 5);
    if (settings.Parity != 'N') {
        flags |= PARENB;
    }
    if (settings.Parity == 'O') {
        flags |= PARODD;
    }
    if (settings.StopBits == 2) {
        flags |= CSTOPB;
    }
    return flags;
}

termios TransparentLine(termios line, speed_t speed, tcflag_t frame) {
    line.c_iflag = 0;
    line.c_oflag = 0;
    line.c_lflag = 0;
    line.c_cflag = (line.c_cflag & ~(frameFlags | CRTSCTS)) | frame | CLOCAL | CREAD;
    // With one byte as the least, "nothing yet" (EAGAIN) and "hung up" (0) are different answers of read().
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    cfsetispeed(&line, speed);
    cfsetospeed(&line, speed);
    return line;
}

}  // namespace

bool SetLine(int fd, const LineSettings& settings) {
    termios before{};
    const auto speed = SpeedOf(settings.Baud);
    if (!speed || tcgetattr(fd, &before) != 0) {
        return false;
    }
    const auto frame = FrameFlagsOf(settings);
    const auto wanted = TransparentLine(before, *speed, frame);
    // tcsetattr is content when any part of the change was possible: only reading back tells.
    termios now{};
    if (tcsetattr(fd, TCSANOW, &wanted) == 0 && tcgetattr(fd, &now) == 0 && cfgetospeed(&now) == *speed
        && (now.c_cflag & frameFlags) == frame) {
        return true;
    }
    tcsetattr(fd, TCSANOW, &before);
    return false;
}

std::optional<int> ShortenLatency(int fd) {
    serial_struct serial{};
    if (ioctl(fd, TIOCGSERIAL, &serial) != 0
        || (static_cast<unsigned>(serial.flags) & ASYNC_LOW_LATENCY) != 0) {
        return std::nullopt;
    }
    const int before = serial.flags;
    serial.flags = static_cast<int>(static_cast<unsigned>(before) | ASYNC_LOW_LATENCY);
    return ioctl(fd, TIOCSSERIAL, &serial) == 0 ? std::optional(before) : std::nullopt;
}

void SetDriverFlags(int fd, int flags) {
    serial_struct serial{};
    if (ioctl(fd, TIOCGSERIAL, &serial) == 0) {
        serial.flags = flags;
        ioctl(fd, TIOCSSERIAL, &serial);
    }
}

}  // namespace burnwick
