// A cable between two lines, for programs that see them as COM ports: two pseudo-terminals, linked from the
// two paths given, each getting what is written to the other. Runs until it is ended. Either end may write an
// order: after "hang up" both lines are gone, and new ones are in their place; until then, after "stop
// reading" nobody takes what the other end writes.

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "platform/files/linux/UniqueFd.h"

namespace {

using burnwick::UniqueFd;

// Both ends of one line are held open, or it would hang up whenever nobody uses it.
struct Line {
    UniqueFd Far{posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)};
    UniqueFd Near;
    std::string LatestBytes;
    bool IsRead = true;

    // Whoever opens the path at this moment gets the line before it, or this one.
    bool LinkFrom(const std::string& path) {
        if (!Far || grantpt(Far.Get()) != 0 || unlockpt(Far.Get()) != 0) {
            return false;
        }
        const char* name = ptsname(Far.Get());
        Near.Reset(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
        termios line{};
        tcgetattr(Near.Get(), &line);
        cfmakeraw(&line);
        const std::string fresh = path + ".new";
        return tcsetattr(Near.Get(), TCSANOW, &line) == 0 && symlink(name, fresh.c_str()) == 0
               && rename(fresh.c_str(), path.c_str()) == 0;
    }

    bool WasTold(const char* order) const { return LatestBytes.ends_with(order); }

    pollfd Input() const { return {IsRead ? Far.Get() : -1, POLLIN, 0}; }
};

struct Cable {
    Line One;
    Line Other;

    // Nothing when there is no line to be had.
    static std::unique_ptr<Cable> Between(const char* one, const char* other) {
        auto cable = std::make_unique<Cable>();
        return cable->One.LinkFrom(one) && cable->Other.LinkFrom(other) ? std::move(cable) : nullptr;
    }
};

// False when the line is to be gone.
bool Carry(Line& from, Line& to) {
    constexpr std::size_t longestOrder = 12;
    std::array<char, 4096> bytes{};
    const auto got = read(from.Far.Get(), bytes.data(), bytes.size());
    if (got <= 0 || write(to.Far.Get(), bytes.data(), static_cast<std::size_t>(got)) != got) {
        return false;
    }
    from.LatestBytes.append(bytes.data(), static_cast<std::size_t>(got));
    from.LatestBytes.erase(0, from.LatestBytes.size() - std::min(from.LatestBytes.size(), longestOrder));
    to.IsRead = to.IsRead && !from.WasTold("stop reading");
    return !from.WasTold("hang up");
}

// Until both lines are to be gone.
void Serve(Cable& cable) {
    for (bool goesOn = true; goesOn;) {
        std::array<pollfd, 2> input{cable.One.Input(), cable.Other.Input()};
        goesOn = poll(input.data(), input.size(), -1) > 0;
        goesOn = goesOn && (input[0].revents == 0 || Carry(cable.One, cable.Other));
        goesOn = goesOn && (input[1].revents == 0 || Carry(cable.Other, cable.One));
    }
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int usage = 64;
    if (argc != 3) {
        return usage;
    }
    auto cable = Cable::Between(argv[1], argv[2]);
    while (cable) {
        Serve(*cable);
        auto next = Cable::Between(argv[1], argv[2]);
        cable = std::move(next);
    }
    std::perror("null_modem");
    return 1;
}
