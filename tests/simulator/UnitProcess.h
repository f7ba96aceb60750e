#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "simulator/FileDescriptor.h"
#include "support/Program.h"

namespace simulator {

// burnwick-unit as a process of its own. Every wait ends after some seconds.
class UnitProcess {
public:
    explicit UnitProcess(const std::vector<std::string>& arguments);

    // The next line of standard output; empty when none comes.
    std::string ReadLine();

    // What it has complained of, once it has ended.
    std::string Errors() const { return Program_.Err(); }

    void Signal(int number) const { Program_.Signal(number); }

    // The exit status; negative when it does not end, or not by itself.
    int Wait();

private:
    burnwick::test::Program Program_;
    std::size_t LinesRead_ = 0;
    bool Ended_ = false;
};

// The host's end of the line, raw.
class HostPort {
public:
    HostPort(const std::string& path, unsigned speed);

    void SetSpeed(unsigned speed) const;  // as <termios.h> names it
    void Write(std::span<const std::byte> bytes) const;

    // Exactly so many bytes; fewer when they do not come in time.
    std::vector<std::byte> Read(std::size_t length) const;

private:
    FileDescriptor Port_;
};

}  // namespace simulator
