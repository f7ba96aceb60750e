#pragma once

#include <string>

#include "image/modBinFileInfo.h"
#include "job/RunTexts.h"
#include "log/ActivityLog.h"

namespace burnwick {

// What a user is shown of an image.
struct SoftwareSummary {
    std::string Checksum;
    std::string Version;
    std::string Language;
    std::string DateStamp;
};

// The checksum is shown whole for the newer kinds, whose images carry their own, or when `wholeChecksum` asks
// for it; else its last four digits.
SoftwareSummary SummaryOf(const modBinFileInfo::BinFileInfo& info, bool wholeChecksum);

// All that is shown of an image, and its file's size, in one line: six fields, or seven of an image that
// names its model, with four blanks between.
std::string SoftwareLine(const modBinFileInfo::BinFileInfo& info, const SoftwareSummary& summary);

// The log's record of a download of this image file; `run` is the programming, without a verification.
ActivityRecord RecordOf(const RunResult& run, const RunTexts& texts, const std::string& imageFileName,
                        const SoftwareSummary& summary);

}  // namespace burnwick
