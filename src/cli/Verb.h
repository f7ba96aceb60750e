#pragma once

#include <string>

#include "cli/Environment.h"
#include "cli/ExitStatus.h"

namespace CLI {
class App;
}

namespace burnwick::cli {

// One verb of the command line: says what it takes, and does its work.
class Verb {
public:
    virtual ~Verb() = default;

    // Adds the verb with its arguments.
    virtual CLI::App& AddTo(CLI::App& app) = 0;

    // The exit status. Bad input has been told on Err by then, in one line.
    virtual int Execute(Environment& environment) = 0;
};

// "burnwick-cli: " and the text, on a line of its own.
void PrintError(std::ostream& err, const std::string& text);

}  // namespace burnwick::cli
