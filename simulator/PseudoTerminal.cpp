#include "simulator/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): posix_openpt and its kin
#include <termios.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

int OrThrow(int result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

int OpenMaster() {
    return OrThrow(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC), "cannot get a pseudo-terminal");
}

std::string PathOfHost(int master) {
    OrThrow(grantpt(master), "cannot grant the pseudo-terminal");
    OrThrow(unlockpt(master), "cannot unlock the pseudo-terminal");
    constexpr std::size_t longest = 128;
    std::array<char, longest> path{};
    if (const int error = ptsname_r(master, path.data(), path.size()); error != 0) {
        throw std::system_error(error, std::generic_category(), "the pseudo-terminal has no name");
    }
    return path.data();
}

int OpenHost(const std::string& path) {
    const int host =
        OrThrow(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "cannot open the pseudo-terminal");
    termios settings{};
    tcgetattr(host, &settings);
    cfmakeraw(&settings);
    cfsetspeed(&settings, B9600);
    tcsetattr(host, TCSANOW, &settings);
    return host;
}

}  // namespace

PseudoTerminal::PseudoTerminal()
    : Master_(OpenMaster()), HostPath_(PathOfHost(Master_.Get())), Host_(OpenHost(HostPath_)) {}

unsigned PseudoTerminal::HostBaud() const {
    constexpr std::array<std::pair<speed_t, unsigned>, 12> speeds = {{{B300, 300},
                                                                      {B600, 600},
                                                                      {B1200, 1200},
                                                                      {B2400, 2400},
                                                                      {B4800, 4800},
                                                                      {B9600, 9600},
                                                                      {B19200, 19200},
                                                                      {B38400, 38400},
                                                                      {B57600, 57600},
                                                                      {B115200, 115200},
                                                                      {B230400, 230400},
                                                                      {B460800, 460800}}};
    termios settings{};
    // Asked of the unit's end, the system tells what the host has set at its own.
    if (tcgetattr(Master_.Get(), &settings) != 0) {
        return 0;
    }
    const auto* known = std::find_if(speeds.begin(), speeds.end(), [&settings](const auto& speed) {
        return speed.first == cfgetospeed(&settings);
    });
    return known == speeds.end() ? 0 : known->second;
}

std::vector<std::byte> PseudoTerminal::Read() {
    constexpr std::size_t mostAtOnce = 4096;
    std::vector<std::byte> bytes(mostAtOnce);
    const auto length = read(Master_.Get(), bytes.data(), bytes.size());
    bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

std::size_t PseudoTerminal::Write(std::span<const std::byte> bytes) {
    const auto length = write(Master_.Get(), bytes.data(), bytes.size());
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

}  // namespace simulator
