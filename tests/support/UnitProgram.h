#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace burnwick::test {

// A simulated unit, a process of its own, on a line.
class UnitProgram {
public:
    // Options as burnwick-unit takes them.
    explicit UnitProgram(std::vector<std::string> options = {});
    UnitProgram(const UnitProgram&) = delete;
    UnitProgram& operator=(const UnitProgram&) = delete;
    ~UnitProgram();

    // What its line is called in the section "Ports" of the settings.
    const std::string& Line() const;
    // Its flash memory. It keeps it up to date from the finish message of each run on.
    Bytes Flash() const;
    // The unit is gone, and the line with it.
    void Kill();

private:
    struct Process;
    std::unique_ptr<Process> Process_;
};

}  // namespace burnwick::test
