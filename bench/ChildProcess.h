#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/files/linux/UniqueFd.h"

namespace bench {

// What a process had used when it ended.
struct Usage {
    int ExitStatus = -1;  // negative when a signal ended it
    std::chrono::duration<double> Wall{};
    std::chrono::duration<double> Processor{};  // user and system
    std::size_t PeakMemory = 0;                 // bytes; never less than this program held when it started it
};

// A process that ends with its object, and with this process however that ends.
class ChildProcess {
public:
    // `body` runs in the process; what it returns is the exit status.
    explicit ChildProcess(const std::function<int()>& body);
    // Another program. Standard output and error go where `output` leads.
    ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments, int output);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    void Signal(int number) const;

    // False when it still runs after so long.
    bool EndsWithin(std::chrono::milliseconds atMost) const;

    // Waits for its end. Throws when it still runs after so long.
    Usage Wait(std::chrono::seconds atMost);

    // User and system time until now.
    std::chrono::duration<double> ProcessorTime() const;

private:
    std::chrono::steady_clock::time_point Start_ = std::chrono::steady_clock::now();
    pid_t Process_ = -1;
    burnwick::UniqueFd Handle_;
};

// The program of that name beside this one.
std::filesystem::path Neighbour(const std::string& name);

// Another program whose output is read line by line, what it complains of too.
class TalkingProcess {
public:
    TalkingProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);

    ChildProcess& Process() { return Process_; }
    const ChildProcess& Process() const { return Process_; }

    // The next line, without its end; what there is of it when no more comes for some seconds.
    std::string ReadLine() const;

private:
    struct Pipe {
        Pipe();
        burnwick::UniqueFd Out;
        burnwick::UniqueFd In;
    };

    Pipe Pipe_;
    ChildProcess Process_;
};

// burnwick-unit, serving a line.
class UnitProcess {
public:
    explicit UnitProcess(const std::vector<std::string>& arguments);

    const std::string& Device() const { return Device_; }

private:
    TalkingProcess Process_;
    std::string Device_;
};

}  // namespace bench
