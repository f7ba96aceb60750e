#pragma once

#include <filesystem>
#include <string>

// The file of the activity log, as its viewer reads and clears it.
namespace burnwick {

struct LogFile {
    std::string Content;       // as it stands in the file; empty when there is none
    std::string Trouble;       // why it cannot be shown, and what to do; empty when it can
    bool MayBeCleared = true;  // not so when nobody could tell what would be lost
};

LogFile ReadLogFile(const std::filesystem::path& folder);

// Deletes the log, between two entries of other copies of the program. Gives what went wrong and what to do;
// nothing when there is no log any more.
std::string ClearLogFile(const std::filesystem::path& folder);

}  // namespace burnwick
