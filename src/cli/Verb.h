#pragma once

#include <string>

#include "cli/Arguments.h"
#include "cli/Environment.h"
#include "cli/ExitStatus.h"

namespace burnwick::cli {

// One verb of the command line: says what it takes, and does its work.
class Verb {
public:
    virtual ~Verb() = default;

    // As it is typed.
    virtual std::string Name() const = 0;

    // What it does, in a line of the help.
    virtual std::string Help() const = 0;

    virtual void Declare(Arguments& arguments) = 0;

    // True for a verb that does more than print: its outcome stands, whether it can be printed or not.
    virtual bool IsRun() const { return false; }

    // The exit status. Bad input has been told on Err by then, in one line.
    virtual int Execute(Environment& environment) = 0;
};

// "burnwick-cli: " and the text, on a line of its own.
void PrintError(std::ostream& err, const std::string& text);

}  // namespace burnwick::cli
