#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/window/BoxText.h"

// What the viewer of the activity log shows and says (UTF-8).
namespace burnwick {

// What stands in place of a log that is empty or is not there.
inline constexpr std::string_view EmptyLogText = "The Activity log is empty.";

// Ends each line of the log, on every system.
inline constexpr std::string_view LogLineEnd = "\r\n";

// A log's size in KB, rounded up. A size without a remainder is told as 0, on purpose.
std::uintmax_t LogSizeInKB(std::uintmax_t bytes);

// A log as the viewer shows it: its lines, then the closing lines with its size, each ended by CR LF. CR LF,
// LF and CR end a line of the log. A line that is not valid UTF-8 is read as one in the system's own 8-bit
// characters, or as Windows-1252 where it has none. Control characters become blanks.
std::string LogText(std::string_view content);

// A search that has found nothing. Only the beginning of a very long text is told.
BoxText NotFoundBox(std::string_view searchText);

BoxText ClearLogQuestion();

}  // namespace burnwick
