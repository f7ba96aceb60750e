// A cable between two lines, for programs that see them as COM ports: two pseudo-terminals, linked from the
// two paths given, each getting what is written to the other. Runs until it is ended, or until "hang up" is
// written: then both lines are gone.

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "platform/linux/UniqueFd.h"

namespace {

using burnwick::UniqueFd;

// Both ends of one line are held open, or it would hang up whenever nobody uses it.
struct Line {
    UniqueFd Far{posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)};
    UniqueFd Near;
    std::string LatestBytes;

    bool LinkFrom(const char* path) {
        if (!Far || grantpt(Far.Get()) != 0 || unlockpt(Far.Get()) != 0) {
            return false;
        }
        const char* name = ptsname(Far.Get());
        Near.Reset(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
        termios line{};
        tcgetattr(Near.Get(), &line);
        cfmakeraw(&line);
        unlink(path);
        return tcsetattr(Near.Get(), TCSANOW, &line) == 0 && symlink(name, path) == 0;
    }
};

// False when it is time to end.
bool Carry(Line& from, const Line& to) {
    const std::string order = "hang up";
    std::array<char, 4096> bytes{};
    const auto got = read(from.Far.Get(), bytes.data(), bytes.size());
    if (got <= 0 || write(to.Far.Get(), bytes.data(), static_cast<std::size_t>(got)) != got) {
        return false;
    }
    from.LatestBytes.append(bytes.data(), static_cast<std::size_t>(got));
    if (from.LatestBytes.ends_with(order)) {
        return false;
    }
    from.LatestBytes.erase(0, from.LatestBytes.size() - std::min(from.LatestBytes.size(), order.size()));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int usage = 64;
    Line one;
    Line other;
    if (argc != 3) {
        return usage;
    }
    if (!one.LinkFrom(argv[1]) || !other.LinkFrom(argv[2])) {
        std::perror("null_modem");
        return 1;
    }
    for (bool goesOn = true; goesOn;) {
        std::array<pollfd, 2> input{{{one.Far.Get(), POLLIN, 0}, {other.Far.Get(), POLLIN, 0}}};
        goesOn = poll(input.data(), input.size(), -1) > 0;
        goesOn = goesOn && (input[0].revents == 0 || Carry(one, other));
        goesOn = goesOn && (input[1].revents == 0 || Carry(other, one));
    }
    return 0;
}
