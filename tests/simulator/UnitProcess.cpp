#include "simulator/UnitProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <termios.h>

#include <array>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace simulator {

struct Pipe {
    Pipe() {
        if (pipe2(Ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
    }
    std::array<int, 2> Ends{};
};

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto Patience = 10s;

// One byte; false at the end, or when none comes in time.
bool ReadByte(int descriptor, Clock::time_point deadline, char& value) {
    while (Clock::now() < deadline) {
        pollfd watched{descriptor, POLLIN, 0};
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (poll(&watched, 1, static_cast<int>(rest.count())) > 0) {
            return read(descriptor, &value, 1) == 1;
        }
    }
    return false;
}

pid_t Spawn(const std::vector<std::string>& arguments, const Pipe& output, const Pipe& errors) {
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output.Ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.Ends[1], STDERR_FILENO);
    std::vector<std::string> texts = {BURNWICK_UNIT};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    pid_t process = -1;
    const int error = posix_spawn(&process, BURNWICK_UNIT, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(output.Ends[1]);
    close(errors.Ends[1]);
    if (error != 0) {
        throw std::runtime_error("cannot start " BURNWICK_UNIT);
    }
    return process;
}

}  // namespace

UnitProcess::UnitProcess(const std::vector<std::string>& arguments)
    : UnitProcess(arguments, Pipe(), Pipe()) {}

UnitProcess::UnitProcess(const std::vector<std::string>& arguments, const Pipe& output, const Pipe& errors)
    : Process_(Spawn(arguments, output, errors)), Output_(output.Ends[0]), Errors_(errors.Ends[0]) {}

UnitProcess::~UnitProcess() {
    if (Process_ > 0) {
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }
}

std::string UnitProcess::ReadLine() {
    const auto deadline = Clock::now() + Patience;
    std::string line;
    char value = 0;
    while (ReadByte(Output_.Get(), deadline, value) && value != '\n') {
        line += value;
    }
    return line;
}

std::string UnitProcess::Errors() {
    const auto deadline = Clock::now() + Patience;
    std::string text;
    char value = 0;
    while (ReadByte(Errors_.Get(), deadline, value)) {
        text += value;
    }
    return text;
}

void UnitProcess::Signal(int number) const {
    kill(Process_, number);
}

int UnitProcess::Wait() {
    const auto deadline = Clock::now() + Patience;
    while (Clock::now() < deadline) {
        int status = 0;
        if (waitpid(Process_, &status, WNOHANG) == Process_) {
            Process_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        std::this_thread::sleep_for(1ms);
    }
    return -1;
}

HostPort::HostPort(const std::string& path, unsigned speed)
    : Port_(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    SetSpeed(speed);
}

void HostPort::SetSpeed(unsigned speed) const {
    termios settings{};
    tcgetattr(Port_.Get(), &settings);
    cfmakeraw(&settings);
    cfsetspeed(&settings, speed);
    tcsetattr(Port_.Get(), TCSANOW, &settings);
}

void HostPort::Write(std::span<const std::byte> bytes) const {
    if (write(Port_.Get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("the line does not take the message");
    }
}

std::vector<std::byte> HostPort::Read(std::size_t length) const {
    const auto deadline = Clock::now() + Patience;
    std::vector<std::byte> bytes;
    char value = 0;
    while (bytes.size() < length && ReadByte(Port_.Get(), deadline, value)) {
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

}  // namespace simulator
