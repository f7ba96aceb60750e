#pragma once

#include <string>
#include <vector>

namespace burnwick {

// The words behind the program's name, as UTF-8 whatever the system's own characters are. Where a shell
// leaves "*.bin" to the programs, it is the files of such names here, in the order of their names.
std::vector<std::string> ProgramArguments(int argc, char* const* argv);

// Of the `argc` words that the program was started with, its name among them, those in which the toolkit may
// look for options of its own. Words of a path that was not put into quotes may look like some.
int WordsForToolkit(int argc);

// What stands behind the program's name as one text, for a path that was not put into quotes: as it was typed
// where the system keeps that, otherwise `words` with one blank between them.
std::string CommandText(const std::vector<std::string>& words);

// A variable of the environment as UTF-8; empty when there is none.
std::string EnvironmentText(const char* name);

// From here on standard output and error take UTF-8, and leave line ends as they are written.
void PrintUnchanged();

}  // namespace burnwick
