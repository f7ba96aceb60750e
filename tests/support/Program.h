#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/Eventually.h"
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

}  // namespace burnwick::test
