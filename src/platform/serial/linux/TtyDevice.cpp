#include "platform/serial/linux/TtyDevice.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "platform/serial/linux/TtyErrors.h"
#include "platform/serial/linux/TtyLine.h"
#include "platform/serial/linux/TtyOutput.h"

namespace burnwick {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto longestWrite = std::chrono::seconds(1);

// False when the limit is reached or the line is gone.
bool WaitForRoom(int fd, Clock::time_point limit) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now());
        if (left <= std::chrono::milliseconds::zero()) {
            return false;
        }
        pollfd output{fd, POLLOUT, 0};
        const int ready = poll(&output, 1, static_cast<int>(left.count()));
        if (ready > 0) {
            return (output.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

}  // namespace

TtyDevice::~TtyDevice() {
    Close();
}

void TtyDevice::DiscardInput() {
    if (Fd_) {
        tcflush(Fd_.Get(), TCIFLUSH);
    }
}

std::optional<WaitHandle> TtyDevice::InputHandle() const {
    return Fd_ ? std::optional<WaitHandle>(Fd_.Get()) : std::nullopt;
}

CommResult TtyDevice::Take(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return DeviceError(path, errno);
    }
    // Opening anything else for writing could already change it.
    if (!S_ISCHR(status.st_mode)) {
        return NotSerialError(path);
    }
    Fd_.Reset(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!Fd_) {
        return DeviceError(path, errno);
    }
    // TIOCEXCL does not keep the system's own user out; this lock does.
    if (flock(Fd_.Get(), LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        // Closed first, so that the search for who holds the device does not find this very descriptor.
        Fd_.Reset();
        return DeviceError(path, error);
    }
    return {};
}

CommResult TtyDevice::Prepare(const std::string& path, const LineSettings& settings) {
    termios before{};
    if (tcgetattr(Fd_.Get(), &before) != 0) {
        return DeviceError(path, errno);
    }
    LineBefore_ = before;
    ioctl(Fd_.Get(), TIOCEXCL);
    DriverFlagsBefore_ = ShortenLatency(Fd_.Get());
    if (!Apply(settings)) {
        return SettingsError(path, settings);
    }
    DiscardInput();
    return {};
}

void TtyDevice::Release() {
    if (LineBefore_) {
        tcsetattr(Fd_.Get(), TCSANOW, &*LineBefore_);
        ioctl(Fd_.Get(), TIOCNXCL);
    }
    if (DriverFlagsBefore_) {
        SetDriverFlags(Fd_.Get(), *DriverFlagsBefore_);
    }
    Fd_.Reset();
    LineBefore_.reset();
    DriverFlagsBefore_.reset();
}

bool TtyDevice::SetTo(const LineSettings& settings) {
    return SetLine(Fd_.Get(), settings);
}

std::optional<std::size_t> TtyDevice::Receive(std::span<std::byte> room) {
    ssize_t got = 0;
    do {
        got = read(Fd_.Get(), room.data(), room.size());
    } while (got < 0 && errno == EINTR);
    if (got > 0) {
        return static_cast<std::size_t>(got);
    }
    const bool nothingYet = got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    return nothingYet ? std::optional<std::size_t>(0) : std::nullopt;
}

void TtyDevice::Send(std::span<const std::byte> bytes) {
    const auto limit = Clock::now() + longestWrite;
    while (!bytes.empty()) {
        const auto put = write(Fd_.Get(), bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) {
            continue;
        }
        if (put < 0 && errno != EAGAIN && errno != EWOULDBLOCK) {
            return;
        }
        bytes = bytes.subspan(put > 0 ? static_cast<std::size_t>(put) : 0);
        if (!bytes.empty() && !WaitForRoom(Fd_.Get(), limit)) {
            return;
        }
    }
}

LineDevice::Unsent TtyDevice::UnsentOutput() {
    if (IsPseudoTerminal(Fd_.Get())) {
        return Unsent::None;
    }
    if (DriverHoldsOutput(Fd_.Get())) {
        return Unsent::Some;
    }
    const auto empty = ChipIsEmpty(Fd_.Get());
    if (!empty) {
        return Unsent::Unknown;
    }
    return *empty ? Unsent::None : Unsent::Some;
}

std::unique_ptr<SerialDevice> NewSerialDevice() {
    return std::make_unique<TtyDevice>();
}

}  // namespace burnwick
