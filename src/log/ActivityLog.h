#pragma once

#include <ctime>
#include <filesystem>
#include <string>

// The activity log "Burnwick.log": one record a run, as lines that end in CR LF, parted by a line with one
// blank. A line break inside a text is written as a blank. Nothing here reports an error: what cannot be
// written is left out.
namespace burnwick {

// What a run leaves for the log, as texts (UTF-8).
struct ActivityRecord {
    bool Started = false;       // contact was made; a run that never started leaves no record
    bool Succeeded = false;     // adds the timing, and to a full record what is known of the image
    std::string ImageFileName;  // full path
    bool IsUpload = false;
    std::string Status;
    std::string Timing;
    std::string Checksum;
    std::string Version;
    std::string DateStamp;
    std::string Language;
    std::string Size;        // "1,024KB"; empty when the file's length is not known
    bool Verifying = false;  // a read-back was made
    std::string Result;      // of the verification
};

// Appends the run's record as the setting LogOption says ("&All", "&Disable" or empty; anything else writes
// the short form). A log of more than 16384 bytes is archived first, and begun
// anew with its last 30 records.
void WriteActivityLog(const std::filesystem::path& folder, const std::string& logOption,
                      const ActivityRecord& record, const std::tm& now);

// Notes a new baud rate ("57600" or else "115200" has been chosen) in a log that is there.
void LogBaudRateChange(const std::filesystem::path& folder, bool to57600, const std::tm& now);

}  // namespace burnwick
