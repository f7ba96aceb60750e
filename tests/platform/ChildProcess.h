#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick::test {

// A copy of this process that runs `work` and then stays until it is killed: with its object at the latest.
class ChildProcess {
public:
    // Returns when the work is done.
    explicit ChildProcess(const std::function<void()>& work) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            return;
        }
        UniqueFd readEnd(ends[0]);
        UniqueFd writeEnd(ends[1]);
        Process_ = fork();
        if (Process_ == 0) {
            work();
            writeEnd.Reset();
            for (;;) {
                pause();
            }
        }
        writeEnd.Reset();
        char none = 0;
        static_cast<void>(!read(readEnd.Get(), &none, 1));
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { Kill(); }

    pid_t Process() const { return Process_; }

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

}  // namespace burnwick::test
