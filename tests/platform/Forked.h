#pragma once

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <utility>

namespace burnwick::test {

// A copy of this process that does some work beside it, and is gone with its object.
class Forked {
public:
    explicit Forked(const std::function<void()>& work) : Process_(fork()) {
        if (Process_ == 0) {
            work();
            _exit(0);
        }
    }
    Forked(Forked&& other) noexcept : Process_(std::exchange(other.Process_, -1)) {}
    Forked(const Forked&) = delete;
    Forked& operator=(const Forked&) = delete;
    Forked& operator=(Forked&&) = delete;
    ~Forked() { Kill(); }

    // True when the work was done to its end.
    bool Wait() {
        int status = -1;
        const bool ended = Process_ > 0 && waitpid(Process_, &status, 0) == Process_;
        Process_ = -1;
        return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    void Kill() {
        if (Process_ > 0) {
            kill(Process_, SIGKILL);
            waitpid(Process_, nullptr, 0);
            Process_ = -1;
        }
    }

private:
    pid_t Process_ = -1;
};

// Does the work as a user who may not do everything: root does it as another one.
inline bool DoneAsAnyUser(const std::function<void()>& work) {
    return Forked([&work] {
               constexpr uid_t nobody = 65534;
               if (geteuid() == 0 && setuid(nobody) != 0) {
                   _exit(1);
               }
               work();
           })
        .Wait();
}

// Does the work in another process, and kills that when it has come to its `stop`th begin or end of a system
// call. False when the work was done before.
inline bool KilledAtStop(int stop, const std::function<void()>& work) {
    const pid_t process = fork();
    if (process == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    bool stopped = waitpid(process, &status, 0) == process && WIFSTOPPED(status);
    for (int i = 0; i < stop && stopped; ++i) {
        ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        stopped = waitpid(process, &status, 0) == process && WIFSTOPPED(status);
    }
    if (stopped) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    return stopped;
}

}  // namespace burnwick::test
