#include "platform/process/StandardStreams.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

namespace burnwick {

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
