#include "bench/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <stdexcept>
#include <system_error>

namespace bench {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int CannotStart = 127;

[[noreturn]] void Fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

int Execute(const std::filesystem::path& program, const std::vector<char*>& arguments, int output) {
    if (dup2(output, STDOUT_FILENO) >= 0 && dup2(output, STDERR_FILENO) >= 0) {
        execv(program.c_str(), arguments.data());
    }
    return CannotStart;
}

std::function<int()> Program(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                             int output) {
    return [&program, &arguments, output] {
        std::vector<std::string> texts = {program.string()};
        texts.insert(texts.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        pointers.reserve(texts.size() + 1);
        for (auto& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
        return Execute(program, pointers, output);
    };
}

std::chrono::duration<double> Seconds(const timeval& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

}  // namespace

ChildProcess::ChildProcess(const std::function<int()>& body) {
    const pid_t parent = getpid();
    Process_ = fork();
    if (Process_ < 0) {
        Fail("cannot start a process");
    }
    if (Process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // The parent may have gone before that call.
        _exit(getppid() == parent ? body() : CannotStart);
    }
    // The C library has the call by name, but not every version for C++.
    Handle_.Reset(static_cast<int>(syscall(SYS_pidfd_open, Process_, 0)));
}

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           int output)
    : ChildProcess(Program(program, arguments, output)) {}

ChildProcess::~ChildProcess() {
    if (Process_ > 0) {
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }
}

void ChildProcess::Signal(int number) const {
    kill(Process_, number);
}

bool ChildProcess::EndsWithin(std::chrono::milliseconds atMost) const {
    pollfd watched{Handle_.Get(), POLLIN, 0};
    return poll(&watched, 1, static_cast<int>(atMost.count())) != 0;
}

Usage ChildProcess::Wait(std::chrono::seconds atMost) {
    if (!EndsWithin(atMost)) {
        throw std::runtime_error("a process that should have ended still runs");
    }
    int status = 0;
    rusage used{};
    if (wait4(Process_, &status, 0, &used) != Process_) {
        Fail("cannot wait for a process");
    }
    Process_ = -1;
    constexpr std::size_t kibibyte = 1024;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Clock::now() - Start_,
            Seconds(used.ru_utime) + Seconds(used.ru_stime),
            static_cast<std::size_t>(used.ru_maxrss) * kibibyte};
}

std::chrono::duration<double> ChildProcess::ProcessorTime() const {
    clockid_t clock{};
    timespec used{};
    if (clock_getcpuclockid(Process_, &clock) != 0 || clock_gettime(clock, &used) != 0) {
        Fail("cannot tell the processor time of a process");
    }
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

std::filesystem::path Neighbour(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

TalkingProcess::Pipe::Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        Fail("cannot make a pipe");
    }
    Out.Reset(ends[0]);
    In.Reset(ends[1]);
}

TalkingProcess::TalkingProcess(const std::filesystem::path& program,
                               const std::vector<std::string>& arguments)
    : Process_(program, arguments, Pipe_.In.Get()) {
    Pipe_.In.Reset();
}

std::string TalkingProcess::ReadLine() const {
    std::string line;
    char value = 0;
    pollfd watched{Pipe_.Out.Get(), POLLIN, 0};
    while (poll(&watched, 1, 5000) > 0 && read(watched.fd, &value, 1) == 1 && value != '\n') {
        line += value;
    }
    return line;
}

UnitProcess::UnitProcess(const std::vector<std::string>& arguments)
    : Process_(Neighbour("burnwick-unit"), arguments), Device_(Process_.ReadLine()) {
    if (!Device_.starts_with("/dev/")) {
        throw std::runtime_error("the simulated unit does not start: " + Device_);
    }
}

}  // namespace bench
