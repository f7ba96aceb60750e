#include "simulator/UnitProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace simulator {

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

std::vector<std::string> WithProgram(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), BURNWICK_UNIT);
    return arguments;
}

// The whole lines of a text.
std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

}  // namespace

UnitProcess::UnitProcess(const std::vector<std::string>& arguments) : Program_(WithProgram(arguments)) {}

std::string UnitProcess::ReadLine() {
    const auto hasLine = [this] { return LinesOf(Program_.Out()).size() > LinesRead_; };
    if (!Ended_) {
        burnwick::test::Eventually(hasLine);
    }
    return hasLine() ? LinesOf(Program_.Out()).at(LinesRead_++) : "";
}

int UnitProcess::Wait() {
    Ended_ = true;
    return Program_.Wait().Status;
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
