#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace burnwick::test {

// A program as a process of its own, what it prints kept in files. Every wait ends after some seconds; the
// process ends with its object.
class Program {
public:
    // How the process ended.
    struct End {
        int Status = -1;        // exit status; negative when a signal ended it, or it did not end in time
        double CpuSeconds = 0;  // user and system
    };

    // `prepare` runs in the new process before the program starts; it may make system calls only.
    explicit Program(std::vector<std::string> arguments, const std::function<void()>& prepare = nullptr);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    std::string Out() const;
    std::string Err() const;
    // Waits until the text stands in what it printed on either; false when it does not come.
    bool Prints(const std::string& text) const;
    void Signal(int number) const;
    End Wait();
    pid_t Process() const { return Process_; }

private:
    TempFolder Folder_;
    pid_t Process_ = -1;
};

// Waits until the condition holds; false when it does not within some seconds.
bool Eventually(const std::function<bool()>& condition);

// burnwick-unit on a line of its own.
class UnitProgram {
public:
    explicit UnitProgram(std::vector<std::string> options = {});

    // The path of its line.
    const std::string& Line() const { return Line_; }
    // Its flash memory. It keeps it up to date from the finish message of each run on.
    Bytes Flash() const;
    // The unit is gone, and the line with it.
    void Kill();

private:
    TempFolder Folder_;
    std::string Line_;
    Program Program_;
};

}  // namespace burnwick::test
