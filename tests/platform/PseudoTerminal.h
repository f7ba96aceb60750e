#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick::test {

// A line whose far end the test holds. The near end is open nowhere until the code under test opens it.
class PseudoTerminal {
public:
    PseudoTerminal() : Far_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        grantpt(Far_.Get());
        unlockpt(Far_.Get());
        Path_ = ptsname(Far_.Get());
        SetSpeed(B19200);
    }

    const std::string& Path() const { return Path_; }
    int Far() const { return Far_.Get(); }
    void HangUp() { Far_.Reset(); }

    // The line's settings, which both ends share.
    termios Line() const {
        termios line{};
        tcgetattr(Far_.Get(), &line);
        return line;
    }

    void SetSpeed(speed_t speed) {
        auto line = Line();
        cfsetspeed(&line, speed);
        tcsetattr(Far_.Get(), TCSANOW, &line);
    }

    void Send(std::span<const std::byte> bytes) const {
        while (!bytes.empty()) {
            const auto put = write(Far_.Get(), bytes.data(), bytes.size());
            if (put <= 0) {
                return;
            }
            bytes = bytes.subspan(static_cast<std::size_t>(put));
        }
    }

    // What the near end wrote: waits until so many bytes are there, five seconds at most.
    std::vector<std::byte> Receive(std::size_t count) const {
        std::vector<std::byte> bytes(count);
        std::size_t have = 0;
        pollfd input{Far_.Get(), POLLIN, 0};
        while (have < count && poll(&input, 1, 5000) > 0) {
            const auto got = read(Far_.Get(), bytes.data() + have, count - have);
            if (got <= 0) {
                break;
            }
            have += static_cast<std::size_t>(got);
        }
        bytes.resize(have);
        return bytes;
    }

    // Bytes on their way that nobody has read.
    bool Silent() const {
        pollfd input{Far_.Get(), POLLIN, 0};
        return poll(&input, 1, 0) == 0 || (input.revents & POLLIN) == 0;
    }

private:
    UniqueFd Far_;
    std::string Path_;
};

// Every value a byte can have, once.
inline std::vector<std::byte> AllByteValues() {
    std::vector<std::byte> bytes(256);
    for (std::size_t value = 0; value < bytes.size(); ++value) {
        bytes[value] = static_cast<std::byte>(value);
    }
    return bytes;
}

}  // namespace burnwick::test
