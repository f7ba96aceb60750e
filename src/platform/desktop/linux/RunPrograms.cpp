#include "platform/desktop/RunPrograms.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <optional>
#include <thread>

namespace burnwick {

namespace {

using Clock = std::chrono::steady_clock;

// How a program is started: silent, and with signals as a program expects them, whatever this one ignores.
class Conditions {
public:
    Conditions() {
        posix_spawn_file_actions_init(&Files);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&Files, stream, "/dev/null", O_RDWR, 0);
        }
        sigset_t signals{};
        posix_spawnattr_init(&Attributes);
        posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&Attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        sigaddset(&signals, SIGXFSZ);
        posix_spawnattr_setsigdefault(&Attributes, &signals);
    }
    Conditions(const Conditions&) = delete;
    Conditions& operator=(const Conditions&) = delete;
    ~Conditions() {
        posix_spawn_file_actions_destroy(&Files);
        posix_spawnattr_destroy(&Attributes);
    }

    posix_spawn_file_actions_t Files{};
    posix_spawnattr_t Attributes{};
};

std::optional<pid_t> Start(std::vector<std::string> command, const Conditions& conditions) {
    std::vector<char*> arguments(command.size() + 1, nullptr);
    std::transform(command.begin(), command.end(), arguments.begin(),
                   [](std::string& argument) { return argument.data(); });
    pid_t process = -1;
    const int error = posix_spawnp(&process, arguments.front(), &conditions.Files, &conditions.Attributes,
                                   arguments.data(), environ);
    return error == 0 ? std::optional(process) : std::nullopt;
}

// Waits for the process's end, and sees to it when the limit is reached.
void Await(pid_t process, Clock::time_point limit) {
    constexpr auto pause = std::chrono::milliseconds(3);
    pid_t ended = 0;
    while ((ended = waitpid(process, nullptr, WNOHANG)) == 0 || (ended < 0 && errno == EINTR)) {
        if (Clock::now() >= limit) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
            return;
        }
        std::this_thread::sleep_for(pause);
    }
}

}  // namespace

void RunPrograms(const std::vector<std::vector<std::string>>& commands, std::chrono::milliseconds atMost) {
    const Conditions conditions;
    const auto limit = Clock::now() + atMost;
    std::vector<pid_t> processes;
    for (const auto& command : commands) {
        if (const auto process = Start(command, conditions)) {
            processes.push_back(*process);
        }
    }
    for (const pid_t process : processes) {
        Await(process, limit);
    }
}

}  // namespace burnwick
