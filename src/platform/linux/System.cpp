#include "platform/System.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "platform/linux/PollLoop.h"
#include "platform/linux/TtyDevice.h"

namespace burnwick {

std::unique_ptr<MessageLoop> NewSystemLoop() {
    return std::make_unique<PollLoop>();
}

std::unique_ptr<SerialDevice> NewSerialDevice() {
    return std::make_unique<TtyDevice>();
}

void KeepStandardStreams() {
    // Each open takes the lowest number that is free.
    for (int fd = open("/dev/null", O_RDWR | O_NOCTTY); fd >= 0; fd = open("/dev/null", O_RDWR | O_NOCTTY)) {
        if (fd > STDERR_FILENO) {
            close(fd);
            return;
        }
    }
}

bool ErrorOutputIsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

int ErrorOutputColumns() {
    constexpr int usual = 80;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

void SurviveFailedWrites() {
    // Ignoring cannot fail for a signal that exists.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

}  // namespace burnwick
