#pragma once

#include <sys/types.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "simulator/FileDescriptor.h"

namespace simulator {

struct Pipe;

// burnwick-unit as a process of its own. Every wait ends after some seconds.
class UnitProcess {
public:
    explicit UnitProcess(const std::vector<std::string>& arguments);
    UnitProcess(const UnitProcess&) = delete;
    UnitProcess& operator=(const UnitProcess&) = delete;
    ~UnitProcess();

    // The next line of standard output; empty at its end.
    std::string ReadLine();

    // All that is left of standard error.
    std::string Errors();

    void Signal(int number) const;

    // The exit status; negative when it does not end, or not by itself.
    int Wait();

private:
    UnitProcess(const std::vector<std::string>& arguments, const Pipe& output, const Pipe& errors);

    pid_t Process_ = -1;
    FileDescriptor Output_;
    FileDescriptor Errors_;
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
