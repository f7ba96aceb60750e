#include "support/Program.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

namespace burnwick::test {

namespace {

void RedirectTo(const std::string& path, int descriptor) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(file, descriptor);
    close(file);
}

std::string TextOf(const std::string& path) {
    const Bytes bytes = ReadFile(path);
    std::string text(bytes.size(), ' ');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::byte value) { return static_cast<char>(value); });
    return text;
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

Program::Program(std::vector<std::string> arguments, const std::function<void()>& prepare) {
    const std::string out = Folder_ / "out";
    const std::string err = Folder_ / "err";
    std::vector<char*> pointers;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(pointers),
                   [](std::string& argument) { return argument.data(); });
    pointers.push_back(nullptr);
    Process_ = fork();
    if (Process_ == 0) {
        RedirectTo(out, STDOUT_FILENO);
        RedirectTo(err, STDERR_FILENO);
        if (prepare) {
            prepare();
        }
        execv(pointers.front(), pointers.data());
        _exit(127);
    }
}

Program::~Program() {
    if (Process_ > 0) {
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }
}

std::string Program::Out() const {
    return TextOf(Folder_ / "out");
}

std::string Program::Err() const {
    return TextOf(Folder_ / "err");
}

bool Program::Prints(const std::string& text) const {
    return Eventually(
        [&] { return Out().find(text) != std::string::npos || Err().find(text) != std::string::npos; });
}

void Program::Signal(int number) const {
    kill(Process_, number);
}

Program::End Program::Wait() {
    End end;
    int status = 0;
    rusage usage{};
    if (Eventually([&] { return wait4(Process_, &status, WNOHANG, &usage) == Process_; })) {
        Process_ = -1;
        end.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        end.CpuSeconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
    }
    return end;
}

}  // namespace burnwick::test
